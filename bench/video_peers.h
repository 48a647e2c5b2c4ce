// The tasks of libzelvideo's benchmark and who else has them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "zelvideo.h"

namespace bench::video {

using Call = std::function<void()>;

struct Task {
    const char* name;
    ZelvFormat from, to;
};

constexpr ZelvFormat planar(int sampling, int depth, int matrix, int range) {
    return {zelvPlanar, "YUV", sampling, depth, zelvLowBits, matrix, range, 0, 0, 0};
}
constexpr ZelvFormat semi(int sampling, int depth, int matrix) {
    return {zelvSemiPlanar, "YUV",       sampling, depth, depth > 8 && depth < 16 ? zelvHighBits : zelvLowBits,
            matrix,         zelvLimited, 0,        0,     0};
}
constexpr ZelvFormat planes(int depth) {
    return {zelvPlanar, "GBR", zelv444, depth, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
}
constexpr ZelvFormat bgra{zelvInterleaved, "BGRA", zelv444, 8, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
constexpr ZelvFormat bgr{zelvInterleaved, "BGR", zelv444, 8, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
constexpr ZelvFormat rgb{zelvInterleaved, "RGB", zelv444, 8, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
constexpr ZelvFormat rgb48{zelvInterleaved, "RGB", zelv444, 16, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
constexpr ZelvFormat bgr10{zelvDwords, "BGRX", zelv444, 10, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};

inline constexpr Task tasks[] = {
    {"J420 to BGRA", planar(zelv420, 8, 5, 1), bgra},
    {"I420 709 to BGRA", planar(zelv420, 8, 1, 0), bgra},
    {"I420 2020 to BGRA", planar(zelv420, 8, 9, 0), bgra},
    {"NV12 709 to BGRA", semi(zelv420, 8, 1), bgra},
    {"J420 to RGB", planar(zelv420, 8, 5, 1), rgb},
    {"I420 709 to RGB", planar(zelv420, 8, 1, 0), rgb},
    {"I444 709 to BGRA", planar(zelv444, 8, 1, 0), bgra},
    {"BGRA to J420", bgra, planar(zelv420, 8, 5, 1)},
    {"BGRA to I420 601", bgra, planar(zelv420, 8, 5, 0)},
    {"BGRA to I420 709", bgra, planar(zelv420, 8, 1, 0)},
    {"RGB to J420", rgb, planar(zelv420, 8, 5, 1)},
    {"RGB to I420 709", rgb, planar(zelv420, 8, 1, 0)},
    {"RGB to NV12 709", rgb, semi(zelv420, 8, 1)},
    {"I010 2020 to BGRA", planar(zelv420, 10, 9, 0), bgra},
    {"P010 2020 to BGRA", semi(zelv420, 10, 9), bgra},
    {"P210 2020 to BGRA", semi(zelv422, 10, 9), bgra},
    {"P010 2020 to x2rgb10", semi(zelv420, 10, 9), bgr10},
    {"I010 2020 to x2rgb10", planar(zelv420, 10, 9, 0), bgr10},
    {"P010 2020 to RGB48", semi(zelv420, 10, 9), rgb48},
    {"I010 2020 to GBR 10 planes", planar(zelv420, 10, 9, 0), planes(10)},
    {"GBR 10 planes to I010 2020", planes(10), planar(zelv420, 10, 9, 0)},
    {"RGB to P010 2020", rgb, semi(zelv420, 10, 9)},
    {"RGB48 to P010 2020", rgb48, semi(zelv420, 10, 9)},
    {"x2rgb10 to P010 2020", bgr10, semi(zelv420, 10, 9)},
    {"P010 to I010", semi(zelv420, 10, 9), planar(zelv420, 10, 9, 0)},
    {"I010 to P010", planar(zelv420, 10, 9, 0), semi(zelv420, 10, 9)},
    {"P010 to NV12", semi(zelv420, 10, 9), semi(zelv420, 8, 9)},
    {"NV12 to P010", semi(zelv420, 8, 9), semi(zelv420, 10, 9)},
    {"P010 to P016", semi(zelv420, 10, 9), semi(zelv420, 16, 9)},
    {"I010 to I420", planar(zelv420, 10, 9, 0), planar(zelv420, 8, 9, 0)},
    {"I420 709 to I420 2020", planar(zelv420, 8, 1, 0), planar(zelv420, 8, 9, 0)},
    {"J420 to I420 601", planar(zelv420, 8, 5, 1), planar(zelv420, 8, 5, 0)},
};

// Memory of a frame, filled with reproducible content that fits its depth.
struct Frame {
    Frame(const ZelvFormat& format, ZelSize size);
    const uint8_t* const* readable() const { return const_cast<const uint8_t* const*>(planes); }
    const uint16_t* words(int i) const { return reinterpret_cast<const uint16_t*>(planes[i]); }
    uint16_t* writableWords(int i) const { return reinterpret_cast<uint16_t*>(planes[i]); }

    ZelSize size;
    uint8_t* planes[4] = {};
    int32_t steps[4] = {};
    std::vector<std::shared_ptr<uint8_t[]>> memory;
};

struct Peer {
    std::string name;
    Call call;
};
// They refer to the frames.
std::vector<Peer> peersOf(const Task& task, const Frame& source, const Frame& destination);

}  // namespace bench::video
