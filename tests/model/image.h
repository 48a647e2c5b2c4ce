// Images as the tests see them: planes of bytes, and for each channel the place of its samples in them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace model {

enum class Element { u8, s8, u16, s16, s32, f32, f64 };

constexpr int bytesOf(Element e) {
    switch (e) {
        case Element::u16:
        case Element::s16:
            return 2;
        case Element::s32:
        case Element::f32:
            return 4;
        case Element::f64:
            return 8;
        default:
            return 1;
    }
}

// A plane is rows of units. A unit holds the samples of 2^xShift x 2^yShift pixels.
struct PlaneShape {
    int unitBytes = 0;
    int xShift = 0;
    int yShift = 0;
    bool roundsUp = false;  // a part of a unit at the end of a row or of the rows counts as a whole one

    constexpr int rowBytes(int width) const { return units(width, xShift) * unitBytes; }
    constexpr int rows(int height) const { return units(height, yShift); }
    constexpr int units(int pixels, int shift) const { return (pixels + (roundsUp ? (1 << shift) - 1 : 0)) >> shift; }
    friend constexpr bool operator==(const PlaneShape&, const PlaneShape&) = default;
};

// The samples of a channel: from a byte offset, one every stride bytes, each shared by 2^xShift x 2^yShift pixels.
struct Channel {
    int plane = 0;
    int offset = 0;
    int stride = 0;
    int xShift = 0;
    int yShift = 0;

    constexpr int position(int x) const { return offset + (x >> xShift) * stride; }
    friend constexpr bool operator==(const Channel&, const Channel&) = default;
};

struct Layout {
    int planeCount = 0;
    std::array<PlaneShape, 4> planes{};
    std::array<Channel, 4> channels{};  // red, green, blue or Y, Cb, Cr; then alpha, if there is one
    Element element = Element::u8;
    int stepUnit = 1;  // rows are a multiple of so many bytes apart; what a step has beyond one is lost

    constexpr std::ptrdiff_t pitch(int32_t step) const { return step & -stepUnit; }

    // Planes of one size share one step argument; subsampled images have a step for each plane.
    constexpr bool hasCommonStep() const { return planeCount >= 3 && planes[0] == planes[1]; }
    friend constexpr bool operator==(const Layout&, const Layout&) = default;
};

struct Plane {
    uint8_t* first = nullptr;  // first byte of the top row
    std::ptrdiff_t step = 0;
};

struct Image {
    const Layout* layout = nullptr;
    std::array<Plane, 4> planes{};

    template <class T = uint8_t>
    T& sample(const Channel& c, int x, int y) const {
        const Plane& p = planes[c.plane];
        return *reinterpret_cast<T*>(p.first + (y >> c.yShift) * p.step + c.position(x));
    }

    // The same for samples of several bytes, at any address.
    uint8_t* address(const Channel& c, int x, int y) const { return &sample(c, x, y); }
    template <class T>
    T load(const Channel& c, int x, int y) const {
        T value;
        std::memcpy(&value, address(c, x, y), sizeof value);
        return value;
    }
    template <class T>
    void store(const Channel& c, int x, int y, T value) const {
        std::memcpy(address(c, x, y), &value, sizeof value);
    }
};

// Offsets are those of the channels in the order red, green, blue (Y, Cb, Cr), alpha.
constexpr Layout interleaved(std::array<int, 3> offsets) {
    Layout l{1, {{{3}}}, {}};
    for (int c = 0; c < 3; ++c) l.channels[c] = {0, offsets[c], 3};
    return l;
}
constexpr Layout interleaved(std::array<int, 4> offsets) {
    Layout l{1, {{{4}}}, {}};
    for (int c = 0; c < 4; ++c) l.channels[c] = {0, offsets[c], 4};
    return l;
}
constexpr Layout planar(int cbPlane, int crPlane, int xShift, int yShift) {
    return {3,
            {{{1}, {1, xShift, yShift}, {1, xShift, yShift}}},
            {{{0, 0, 1}, {cbPlane, 0, 1, xShift, yShift}, {crPlane, 0, 1, xShift, yShift}}}};
}
// A last pixel or row without its partner has chroma samples of its own.
constexpr Layout roundedUp(Layout l) {
    for (PlaneShape& plane : l.planes) plane.roundsUp = true;
    return l;
}
constexpr Layout semiPlanar(int cbOffset, int crOffset, int xShift, int yShift) {
    return {2, {{{1}, {2, xShift, yShift}}}, {{{0, 0, 1}, {1, cbOffset, 2, xShift, yShift}, {1, crOffset, 2, xShift, yShift}}}};
}
// Two bytes a pixel: a luma byte, and a chroma byte that serves the pair.
constexpr Layout packed422(int lumaOffset, int cbOffset, int crOffset) {
    return {1, {{{2}}}, {{{0, lumaOffset, 2}, {0, cbOffset, 4, 1}, {0, crOffset, 4, 1}}}};
}

// Channels in their stored order, whatever they stand for.
constexpr Layout pixels(Element element, int channels, int stepUnit) {
    const int bytes = bytesOf(element);
    Layout l{1, {{{channels * bytes}}}, {}, element, stepUnit};
    for (int c = 0; c < channels; ++c) l.channels[c] = {0, c * bytes, channels * bytes};
    return l;
}
constexpr Layout pixels(Element element, int channels) { return pixels(element, channels, bytesOf(element)); }
constexpr Layout threePlanes(Element element) {
    const int bytes = bytesOf(element);
    Layout l{3, {{{bytes}, {bytes}, {bytes}}}, {}, element, bytes};
    for (int c = 0; c < 3; ++c) l.channels[c] = {c, 0, bytes};
    return l;
}

inline constexpr Layout rgb24 = interleaved(std::array{0, 1, 2});
inline constexpr Layout bgr24 = interleaved(std::array{2, 1, 0});
inline constexpr Layout rgba32 = interleaved(std::array{0, 1, 2, 3});
inline constexpr Layout bgra32 = interleaved(std::array{2, 1, 0, 3});
inline constexpr Layout rgbPlanes = planar(1, 2, 0, 0);

inline constexpr Layout ycc24 = interleaved(std::array{0, 1, 2});
inline constexpr Layout ycca32 = interleaved(std::array{0, 1, 2, 3});
inline constexpr Layout ycc444 = planar(1, 2, 0, 0);
inline constexpr Layout yCbCr422 = planar(1, 2, 1, 0);
inline constexpr Layout yCbCr411 = planar(1, 2, 2, 0);
inline constexpr Layout yCbCr420 = planar(1, 2, 1, 1);
inline constexpr Layout yCrCb420 = planar(2, 1, 1, 1);
inline constexpr Layout yCrCb422 = planar(2, 1, 1, 0);
inline constexpr Layout yCbCr1620 = planar(1, 2, 2, 2);
inline constexpr Layout yuv422 = roundedUp(planar(1, 2, 1, 0));
inline constexpr Layout yuv420RoundedUp = roundedUp(planar(1, 2, 1, 1));
inline constexpr Layout yuva444{4, {{{1}, {1}, {1}, {1}}}, {{{0, 0, 1}, {1, 0, 1}, {2, 0, 1}, {3, 0, 1}}}};
inline constexpr Layout nv12 = semiPlanar(0, 1, 1, 1);
inline constexpr Layout nv21 = semiPlanar(1, 0, 1, 1);
inline constexpr Layout nv11 = semiPlanar(0, 1, 2, 0);
inline constexpr Layout yuyv = packed422(0, 1, 3);
inline constexpr Layout yvyu = packed422(0, 3, 1);
inline constexpr Layout uyvy = packed422(1, 0, 2);

}  // namespace model
