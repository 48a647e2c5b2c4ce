// What bench/modelled follows by an emulator: a conversion's call and, where libyuv has the same task, libyuv's call on the same
// image. `modelled_calls` lists the conversions; `modelled_calls NAME PEER` makes a call, of libyuv's function if PEER is 1,
// behind a line that says where the code stands.
#include <dlfcn.h>
#include <libyuv.h>
#include <zelcc.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int width = 1024, height = 8, step = 4160, planeBytes = step * height;  // rows of floats too, and none joins the next
constexpr ZelSize size = {width, height};

alignas(64) uint8_t from[3][planeBytes], to[3][planeBytes];
alignas(64) float floats[planeBytes / sizeof(float)];
const uint8_t* const sources[3] = {from[0], from[1], from[2]};
uint8_t* const destinations[3] = {to[0], to[1], to[2]};
constexpr int32_t steps[3] = {step, step, step};
constexpr float twist[12] = {0.9f, 0.1f, 0, 2, 0.05f, 0.9f, 0.05f, 0, 0, 0.1f, 0.9f, -2};

uint16_t* words(uint8_t* p) { return reinterpret_cast<uint16_t*>(p); }

struct Task {
    const char* family;
    const char* name;
    int (*own)();
    const char* peerName = nullptr;
    int (*peer)() = nullptr;
};

#define FROM from[0], step
#define FROM2 from[0], step, from[1], step
#define FROM3 from[0], step, from[1], step, from[2], step
#define TO to[0], step
#define TO2 to[0], step, to[1], step
#define TO3 to[0], step, to[1], step, to[2], step
#define OWN(name, ...) #name, []() -> int { return name(__VA_ARGS__); }
#define PEER(name, ...) #name, []() -> int { return libyuv::name(__VA_ARGS__, width, height); }

const Task tasks[] = {
    {"lumachroma", OWN(zeliBGRToYCbCr420_8u_C3P3R, FROM, destinations, steps, size), PEER(RGB24ToI420, FROM, TO3)},
    {"lumachroma", OWN(zeliBGRToYCbCr420_8u_AC4P3R, FROM, destinations, steps, size), PEER(ARGBToI420, FROM, TO3)},
    {"lumachroma", OWN(zeliRGBToYCbCr420_8u_C4P2R, FROM, TO2, size), PEER(ABGRToNV12, FROM, TO2)},
    {"lumachroma", OWN(zeliBGRToYCbCr422_8u_AC4P3R, FROM, destinations, steps, size), PEER(ARGBToI422, FROM, TO3)},
    {"lumachroma", OWN(zeliYCbCr420ToBGR_8u_P3C3R, sources, steps, TO, size), PEER(I420ToRGB24, FROM3, TO)},
    {"lumachroma", OWN(zeliYCbCr420ToBGR_8u_P3C4R, sources, steps, TO, size, 255), PEER(I420ToARGB, FROM3, TO)},
    {"lumachroma", OWN(zeliYCbCr420ToBGR_8u_P2C3R, FROM2, TO, size), PEER(NV12ToRGB24, FROM2, TO)},
    {"lumachroma", OWN(zeliYCbCr420ToBGR_8u_P2C4R, FROM2, TO, size, 255), PEER(NV12ToARGB, FROM2, TO)},
    {"lumachroma", OWN(zeliYCbCr422ToBGR_8u_C2C4R, FROM, TO, size, 255), PEER(YUY2ToARGB, FROM, TO)},
    {"lumachroma", OWN(zeliYCbCr422ToBGR_8u_P3C3R, sources, steps, TO, size), PEER(I422ToRGB24, FROM3, TO)},
    {"lumachroma", OWN(zeliYCbCrToBGR_8u_P3C3R, sources, step, TO, size), PEER(I444ToRGB24, FROM3, TO)},
    {"lumachroma", OWN(zeliYCbCrToBGR_8u_P3C4R, sources, step, TO, size, 255), PEER(I444ToARGB, FROM3, TO)},
    {"lumachroma", OWN(zeliRGBToYCbCr_8u_C3P3R, FROM, destinations, step, size)},
    {"lumachroma", OWN(zeliRGBToYUV_8u_C3P3R, FROM, destinations, step, size)},
    {"lumachroma", OWN(zeliYUV420ToRGB_8u_P3C3R, sources, steps, TO, size)},
    {"chroma", OWN(zeliYCbCr420_8u_P2P3R, FROM2, destinations, steps, size), PEER(NV12ToI420, FROM2, TO3)},
    {"chroma", OWN(zeliYCbCr420_8u_P3P2R, sources, steps, TO2, size), PEER(I420ToNV12, FROM3, TO2)},
    {"chroma", OWN(zeliYCbCr422_8u_C2P3R, FROM, destinations, steps, size), PEER(YUY2ToI422, FROM, TO3)},
    {"chroma", OWN(zeliYCbCr422_8u_P3C2R, sources, steps, TO, size), PEER(I422ToYUY2, FROM3, TO)},
    {"chroma", OWN(zeliYCbCr422ToYCbCr420_8u_C2P3R, FROM, destinations, steps, size), PEER(YUY2ToI420, FROM, TO3)},
    {"chroma", OWN(zeliYCbCr422ToYCbCr420_8u_C2P2R, FROM, TO2, size), PEER(YUY2ToNV12, FROM, TO2)},
    {"packed16", OWN(zeliYCbCr420ToBGR565_8u16u_P3C3R, sources, steps, words(to[0]), step, size), PEER(I420ToRGB565, FROM3, TO)},
    {"packed16", OWN(zeliBGR565ToYCbCr420_16u8u_C3P3R, words(from[0]), step, destinations, steps, size),
     PEER(RGB565ToI420, FROM, TO3)},
    {"packed16", OWN(zeliBGRToBGR565_8u16u_C3R, FROM, words(to[0]), step, size)},
    {"packed16", OWN(zeliBGR565ToBGR_16u8u_C3R, words(from[0]), step, TO, size)},
    {"intensity", OWN(zeliRGBToGray_8u_C3C1R, FROM, TO, size), PEER(RAWToJ400, FROM, TO)},
    {"intensity", OWN(zeliYCbCr422ToGray_8u_C2C1R, FROM, TO, size), PEER(YUY2ToY, FROM, TO)},
    {"intensity", OWN(zeliColorTwist32f_8u_C3R, FROM, TO, size, twist)},
    {"intensity", OWN(zeliGammaFwd_8u_C3R, FROM, TO, size)},
    {"intensity", OWN(zeliToneMapLinear_32f8u_C1R, floats, step, TO, size)},
    {"colorimetric", OWN(zeliRGBToXYZ_8u_C3R, FROM, TO, size)},
    {"colorimetric", OWN(zeliRGBToYCC_8u_C3R, FROM, TO, size)},
    {"colorimetric", OWN(zeliRGBToHLS_8u_C3R, FROM, TO, size)},
    {"colorimetric", OWN(zeliRGBToHSV_8u_C3R, FROM, TO, size)},
    {"colorimetric", OWN(zeliRGBToLUV_8u_C3R, FROM, TO, size)},
    {"colorimetric", OWN(zeliBGRToLab_8u_C3R, FROM, TO, size)},
    {"lifting", OWN(zeliRGBToYCoCg_8u_C3P3R, FROM, destinations, step, size)},
    {"lifting", OWN(zeliYCoCgToRGB_8u_P3C3R, sources, step, TO, size)},
    {"rawsensor", OWN(zeliCFAToRGB_8u_C1C3R, from[0], ZelRect{0, 0, width, height}, size, step, TO, zelBayerRGGB, 0)},
    {"reducebits", OWN(zeliReduceBits_8u_C3R, FROM, TO, size, 0, zelDitherNone, 4)},
    {"reducebits", OWN(zeliReduceBits_8u1u_C1R, FROM, TO, 0, size, 0, 0, zelDitherNone, 128)},
};

const void* baseOf(const void* function) {
    Dl_info library{};
    dladdr(function, &library);
    return library.dli_fbase;
}

}  // namespace

int main(int argc, char** argv) {
    for (auto& plane : from)
        for (uint8_t& byte : plane) byte = uint8_t(rand());
    for (float& value : floats) value = float(rand()) / float(RAND_MAX);
    for (const Task& task : tasks) {
        if (argc != 3) {
            std::printf("%s %s %s\n", task.family, task.name, task.peerName ? task.peerName : "");
        } else if (std::strcmp(argv[1], task.name) == 0) {
            const bool peer = argv[2][0] == '1';
            std::printf("%p\n", peer ? baseOf(reinterpret_cast<const void*>(libyuv::I420ToARGB))
                                     : baseOf(reinterpret_cast<const void*>(zelccGetLibVersion)));
            std::fflush(stdout);
            const int status = peer ? task.peer() : task.own();
            return status == 0 ? 0 : 1;
        }
    }
    return argc == 3;
}
