#include "round_trip.h"

#include <utility>

namespace {

// encode(original) and decode(decoded) are the two calls under the names given.
template <class Encode, class Decode>
RoundTrip roundTrip(const char* layout, const Picture& original, ZelSize codedSize, const char* encodeName, Encode encode,
                    const char* decodeName, Decode decode) {
    RoundTrip trip{layout, {timed(encodeName, original.size, encode)}, {}, std::nullopt};
    if (trip.conversions.front().status < 0) return trip;

    Picture decoded(codedSize);
    Conversion back = timed(decodeName, codedSize, [&] { return decode(decoded); });
    if (back.status >= 0) {
        back.error = difference(original, decoded);
        trip.decoded = std::move(decoded);
    }
    trip.conversions.push_back(std::move(back));
    return trip;
}

}  // namespace

RoundTrip planar420(const Picture& original) {
    Frame420 frame(original.size);
    RoundTrip trip = roundTrip(
        "420-planar", original, frame.size,  //
        "zeliRGBToYCbCr420_8u_C3P3R",
        [&] {
            return zeliRGBToYCbCr420_8u_C3P3R(original.pixels.data(), original.step(), frame.planes().data(), frame.steps.data(),
                                              original.size);
        },
        "zeliYCbCr420ToRGB_8u_P3C3R",
        [&](Picture& decoded) {
            return zeliYCbCr420ToRGB_8u_P3C3R(std::as_const(frame).planes().data(), frame.steps.data(), decoded.pixels.data(),
                                              decoded.step(), decoded.size);
        });
    if (!trip.decoded.pixels.empty()) trip.frame = std::move(frame);
    return trip;
}

RoundTrip semiPlanar420(const Picture& original) {
    const ZelSize size{original.size.width & ~1, original.size.height & ~1};
    // Sized by the picture, so that there is memory even where there is no whole site.
    std::vector<uint8_t> luma(std::size_t(original.size.width) * std::size_t(original.size.height));
    std::vector<uint8_t> chroma(luma.size());
    return roundTrip(
        "420-semiplanar", original, size,  //
        "zeliRGBToYCbCr420_8u_C3P2R",
        [&] {
            return zeliRGBToYCbCr420_8u_C3P2R(original.pixels.data(), original.step(), luma.data(), size.width, chroma.data(),
                                              size.width, original.size);
        },
        "zeliYCbCr420ToRGB_8u_P2C3R",
        [&](Picture& decoded) {
            return zeliYCbCr420ToRGB_8u_P2C3R(luma.data(), size.width, chroma.data(), size.width, decoded.pixels.data(),
                                              decoded.step(), size);
        });
}

RoundTrip packed422(const Picture& original) {
    const ZelSize size = original.size;
    const int32_t step = 2 * size.width;
    std::vector<uint8_t> packed(std::size_t(step) * std::size_t(size.height));
    return roundTrip(
        "422-packed", original, size,  //
        "zeliRGBToYCbCr422_8u_C3C2R",
        [&] { return zeliRGBToYCbCr422_8u_C3C2R(original.pixels.data(), original.step(), packed.data(), step, size); },
        "zeliYCbCr422ToRGB_8u_C2C3R",
        [&](Picture& decoded) {
            return zeliYCbCr422ToRGB_8u_C2C3R(packed.data(), step, decoded.pixels.data(), decoded.step(), size);
        });
}
