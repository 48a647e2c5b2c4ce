//! Conversions of the crate `yuv` for C: found by name, called with planes.

use std::ffi::{c_char, CStr};
use yuv::*;

/// A plane in memory of the caller's, with its step in bytes.
#[repr(C)]
pub struct Plane {
    data: *mut u8,
    step: i32,
}

/// What a conversion between RGB and luma-chroma needs beyond the layouts.
#[repr(C)]
#[derive(Clone, Copy)]
pub struct Coding {
    bt709: bool,
    full_range: bool,
    fast: bool,
}

impl Coding {
    fn range(self) -> YuvRange {
        if self.full_range { YuvRange::Full } else { YuvRange::Limited }
    }

    fn matrix(self) -> YuvStandardMatrix {
        if self.bt709 { YuvStandardMatrix::Bt709 } else { YuvStandardMatrix::Bt601 }
    }

    fn mode(self) -> YuvConversionMode {
        if self.fast { YuvConversionMode::Fast } else { YuvConversionMode::Balanced }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct Size {
    width: i32,
    height: i32,
}

impl Size {
    /// Rows of chroma, by the name of a layout.
    fn chroma_rows(self, function: &str) -> i32 {
        let halved = function.contains("420") || function.contains("nv");
        if halved { (self.height + 1) / 2 } else { self.height }
    }
}

/// Source, destination, their size. 0 where the crate reports no error.
type Conversion = unsafe extern "C" fn(&[Plane; 4], &[Plane; 4], Size, Coding) -> i32;

fn bytes(plane: &Plane, rows: i32) -> &[u8] {
    // SAFETY: the caller's planes hold as many rows of as many bytes.
    unsafe { std::slice::from_raw_parts(plane.data, (plane.step * rows) as usize) }
}

#[allow(clippy::mut_from_ref)]
fn bytes_mut(plane: &Plane, rows: i32) -> &mut [u8] {
    // SAFETY: as above, and nothing else refers to a destination during a call.
    unsafe { std::slice::from_raw_parts_mut(plane.data, (plane.step * rows) as usize) }
}

fn store(plane: &Plane, rows: i32) -> BufferStoreMut<'_, u8> {
    BufferStoreMut::Borrowed(bytes_mut(plane, rows))
}

fn planar<'a>(p: &'a [Plane; 4], size: Size, function: &str) -> YuvPlanarImage<'a, u8> {
    let rows = size.chroma_rows(function);
    YuvPlanarImage {
        y_plane: bytes(&p[0], size.height),
        y_stride: p[0].step as u32,
        u_plane: bytes(&p[1], rows),
        u_stride: p[1].step as u32,
        v_plane: bytes(&p[2], rows),
        v_stride: p[2].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

fn planar_mut<'a>(p: &'a [Plane; 4], size: Size, function: &str) -> YuvPlanarImageMut<'a, u8> {
    let rows = size.chroma_rows(function);
    YuvPlanarImageMut {
        y_plane: store(&p[0], size.height),
        y_stride: p[0].step as u32,
        u_plane: store(&p[1], rows),
        u_stride: p[1].step as u32,
        v_plane: store(&p[2], rows),
        v_stride: p[2].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

fn pairs<'a>(p: &'a [Plane; 4], size: Size, function: &str) -> YuvBiPlanarImage<'a, u8> {
    YuvBiPlanarImage {
        y_plane: bytes(&p[0], size.height),
        y_stride: p[0].step as u32,
        uv_plane: bytes(&p[1], size.chroma_rows(function)),
        uv_stride: p[1].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

fn pairs_mut<'a>(p: &'a [Plane; 4], size: Size, function: &str) -> YuvBiPlanarImageMut<'a, u8> {
    YuvBiPlanarImageMut {
        y_plane: store(&p[0], size.height),
        y_stride: p[0].step as u32,
        uv_plane: store(&p[1], size.chroma_rows(function)),
        uv_stride: p[1].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

fn packed<'a>(p: &'a [Plane; 4], size: Size) -> YuvPackedImage<'a, u8> {
    YuvPackedImage {
        yuy: bytes(&p[0], size.height),
        yuy_stride: p[0].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

fn packed_mut<'a>(p: &'a [Plane; 4], size: Size) -> YuvPackedImageMut<'a, u8> {
    YuvPackedImageMut {
        yuy: store(&p[0], size.height),
        yuy_stride: p[0].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

fn gray<'a>(p: &'a [Plane; 4], size: Size) -> YuvGrayImage<'a, u8> {
    YuvGrayImage {
        y_plane: bytes(&p[0], size.height),
        y_stride: p[0].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

fn gray_mut<'a>(p: &'a [Plane; 4], size: Size) -> YuvGrayImageMut<'a, u8> {
    YuvGrayImageMut {
        y_plane: store(&p[0], size.height),
        y_stride: p[0].step as u32,
        width: size.width as u32,
        height: size.height as u32,
    }
}

/// A function for each name: what the crate's functions of one shape are called with.
macro_rules! find {
    ($name:ident; $(|$function:ident, $named:ident, $s:ident, $d:ident, $size:ident, $coding:ident| $call:expr; $($of:ident)*;)*) => {
        $($(
            if $name == stringify!($of) {
                unsafe extern "C" fn conversion($s: &[Plane; 4], $d: &[Plane; 4], $size: Size, $coding: Coding) -> i32 {
                    let ($function, $named) = ($of, stringify!($of));
                    let _ = ($named, $coding);
                    $call.is_err().into()
                }
                return Some(conversion);
            }
        )*)*
    };
}

fn find(name: &str) -> Option<Conversion> {
    find! { name;
        |f, named, s, d, size, c| f(&planar(s, size, named), bytes_mut(&d[0], size.height), d[0].step as u32, c.range(), c.matrix());
            yuv420_to_rgb yuv420_to_bgr yuv420_to_rgba yuv420_to_bgra yuv422_to_rgb yuv422_to_bgr yuv422_to_rgba yuv422_to_bgra
            yuv444_to_rgb yuv444_to_bgr yuv444_to_rgba yuv444_to_bgra;
        |f, named, s, d, size, c| f(&pairs(s, size, named), bytes_mut(&d[0], size.height), d[0].step as u32, c.range(), c.matrix(), c.mode());
            yuv_nv12_to_rgb yuv_nv12_to_bgr yuv_nv12_to_rgba yuv_nv12_to_bgra
            yuv_nv21_to_rgb yuv_nv21_to_bgr yuv_nv21_to_rgba yuv_nv21_to_bgra;
        |f, named, s, d, size, c| f(&packed(s, size), bytes_mut(&d[0], size.height), d[0].step as u32, c.range(), c.matrix());
            yuyv422_to_rgb yuyv422_to_bgr yuyv422_to_rgba yuyv422_to_bgra uyvy422_to_rgb uyvy422_to_bgr uyvy422_to_rgba
            uyvy422_to_bgra yvyu422_to_rgb yvyu422_to_bgr yvyu422_to_rgba yvyu422_to_bgra;
        |f, named, s, d, size, c| f(&mut planar_mut(d, size, named), bytes(&s[0], size.height), s[0].step as u32, c.range(), c.matrix(), c.mode());
            rgb_to_yuv420 bgr_to_yuv420 rgba_to_yuv420 bgra_to_yuv420 rgb_to_yuv422 bgr_to_yuv422 rgba_to_yuv422 bgra_to_yuv422
            rgb_to_yuv444 bgr_to_yuv444 rgba_to_yuv444 bgra_to_yuv444;
        |f, named, s, d, size, c| f(&mut pairs_mut(d, size, named), bytes(&s[0], size.height), s[0].step as u32, c.range(), c.matrix(), c.mode());
            rgb_to_yuv_nv12 bgr_to_yuv_nv12 rgba_to_yuv_nv12 bgra_to_yuv_nv12
            rgb_to_yuv_nv21 bgr_to_yuv_nv21 rgba_to_yuv_nv21 bgra_to_yuv_nv21;
        |f, named, s, d, size, c| f(&mut packed_mut(d, size), &planar(s, size, named));
            yuv420_to_yuyv422 yuv420_to_uyvy422 yuv420_to_yvyu422 yuv422_to_yuyv422 yuv422_to_uyvy422 yuv422_to_yvyu422;
        |f, named, s, d, size, c| f(&mut planar_mut(d, size, named), &packed(s, size));
            yuyv422_to_yuv420 uyvy422_to_yuv420 yvyu422_to_yuv420 yuyv422_to_yuv422 uyvy422_to_yuv422 yvyu422_to_yuv422;
        |f, named, s, d, size, c| f(&gray(s, size), bytes_mut(&d[0], size.height), d[0].step as u32, c.range(), c.matrix());
            yuv400_to_rgb yuv400_to_bgr yuv400_to_rgba yuv400_to_bgra;
        |f, named, s, d, size, c| f(&mut gray_mut(d, size), bytes(&s[0], size.height), s[0].step as u32, c.range(), c.matrix());
            rgb_to_yuv400 bgr_to_yuv400 rgba_to_yuv400 bgra_to_yuv400;
    }
    None
}

/// The crate's conversion of that name, or null.
///
/// # Safety
/// `name` is a string of C's.
#[no_mangle]
pub unsafe extern "C" fn yuv_crate_find(name: *const c_char) -> Option<Conversion> {
    find(CStr::from_ptr(name).to_str().ok()?)
}
