#include "picture_file.h"

#include <jpeglib.h>
#include <png.h>

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace {

using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;

Picture readPng(std::FILE* file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_stdio(&image, file)) throw std::runtime_error(image.message);
    const std::unique_ptr<png_image, decltype(&png_image_free)> cleanup(&image, &png_image_free);

    image.format = PNG_FORMAT_RGB;
    Picture picture(ZelSize{int32_t(image.width), int32_t(image.height)});
    const png_color white{255, 255, 255};
    if (!png_image_finish_read(&image, &white, picture.pixels.data(), 0, nullptr)) throw std::runtime_error(image.message);
    return picture;
}

// libjpeg reports an error by a call that must not return.
struct JpegError {
    jpeg_error_mgr manager;  // first: libjpeg hands out its address
    std::jmp_buf returnPoint;
    char message[JMSG_LENGTH_MAX];

    static void leave(j_common_ptr codec) {
        auto* const error = reinterpret_cast<JpegError*>(codec->err);
        error->manager.format_message(codec, error->message);
        std::longjmp(error->returnPoint, 1);
    }
};

// Only trivial objects live here: the jump of an error passes over destructors.
bool decodeJpeg(jpeg_decompress_struct& codec, JpegError& error, std::FILE* file, Picture& picture) {
    if (setjmp(error.returnPoint)) return false;
    jpeg_create_decompress(&codec);
    jpeg_stdio_src(&codec, file);
    jpeg_read_header(&codec, TRUE);
    codec.out_color_space = JCS_RGB;
    jpeg_start_decompress(&codec);
    picture = Picture(ZelSize{int32_t(codec.output_width), int32_t(codec.output_height)});
    while (codec.output_scanline < codec.output_height) {
        JSAMPROW row = picture.pixels.data() + std::size_t(codec.output_scanline) * std::size_t(picture.step());
        jpeg_read_scanlines(&codec, &row, 1);
    }
    return jpeg_finish_decompress(&codec);
}

Picture readJpeg(std::FILE* file) {
    JpegError error{};
    jpeg_decompress_struct codec{};
    codec.err = jpeg_std_error(&error.manager);
    error.manager.error_exit = &JpegError::leave;
    const std::unique_ptr<jpeg_decompress_struct, decltype(&jpeg_destroy_decompress)> cleanup(&codec, &jpeg_destroy_decompress);

    Picture picture;
    if (!decodeJpeg(codec, error, file, picture)) throw std::runtime_error(error.message);
    return picture;
}

}  // namespace

Picture readPicture(const std::string& path) try {
    const File file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) throw std::runtime_error("cannot be opened");

    std::array<uint8_t, 8> signature{};
    const std::size_t length = std::fread(signature.data(), 1, signature.size(), file.get());
    std::rewind(file.get());
    if (length == 8 && png_sig_cmp(signature.data(), 0, 8) == 0) return readPng(file.get());
    constexpr std::array<uint8_t, 3> jpegStart{0xff, 0xd8, 0xff};
    if (std::equal(jpegStart.begin(), jpegStart.end(), signature.begin())) return readJpeg(file.get());
    throw std::runtime_error("neither PNG nor JPEG");
} catch (const std::exception& error) {
    throw std::runtime_error(path + ": " + error.what());
}

void writePng(const std::string& path, const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = png_uint_32(picture.size.width);
    image.height = png_uint_32(picture.size.height);
    image.format = PNG_FORMAT_RGB;
    image.flags = PNG_IMAGE_FLAG_FAST;
    if (!png_image_write_to_file(&image, path.c_str(), 0, picture.pixels.data(), 0, nullptr))
        throw std::runtime_error(path + ": " + image.message);
}
