// The exports that reduce bit depth, a row each, but for the one to bits.
#include "model/reduce_bits.h"

#include "zelcc/reducebits.h"

namespace model {
namespace {

constexpr Parameters request(int noise, int dither, int levels) {
    return {.integers = {noise, dither, levels}, .hasIntegers = true};
}

constexpr Parameters nearestByte[] = {request(0, zelDitherNone, 5), request(70, zelDitherNone, 256),
                                      request(0, zelDitherNone, 2)};
constexpr Parameters nearestWord[] = {request(0, zelDitherNone, 5), request(0, zelDitherNone, 65536),
                                      request(7, zelDitherNone, 1000)};

constexpr Parameters ditheredBytes[] = {
    request(0, zelDitherBayer, 8),    request(0, zelDitherBayer, 200),      request(50, zelDitherBayer, 5),
    request(100, zelDitherBayer, 2),  request(0, zelDitherFS, 2),           request(0, zelDitherFS, 17),
    request(30, zelDitherFS, 6),      request(100, zelDitherFS, 200),       request(0, zelDitherJJN, 4),
    request(0, zelDitherJJN, 253),    request(1, zelDitherJJN, 7),          request(100, zelDitherJJN, 2),
    request(0, zelDitherStucki, 3),   request(0, zelDitherStucki, 100),     request(99, zelDitherStucki, 256),
    request(10, zelDitherStucki, 12), request(100, zelDitherStucki + 2, 2),
};
constexpr Parameters ditheredWords[] = {
    request(0, zelDitherBayer, 8),       request(0, zelDitherBayer, 40001),    request(50, zelDitherBayer, 300),
    request(100, zelDitherBayer, 3),     request(0, zelDitherFS, 2),           request(0, zelDitherFS, 4097),
    request(30, zelDitherFS, 6),         request(100, zelDitherFS, 65536),     request(0, zelDitherJJN, 4),
    request(0, zelDitherJJN, 2047),      request(1, zelDitherJJN, 65535),      request(100, zelDitherJJN, 2),
    request(0, zelDitherStucki, 3),      request(0, zelDitherStucki, 50000),   request(99, zelDitherStucki, 9999),
    request(10, zelDitherStucki, 65536), request(100, zelDitherStucki + 2, 2),
};

// Steps keep all their bits without a dither, and only then.
template <Element E, ReducedLayout L, bool isDithered>
constexpr Layout layoutOf = pixels(E,
                                   L == ReducedLayout::c1   ? 1
                                   : L == ReducedLayout::c3 ? 3
                                                            : 4,
                                   isDithered ? bytesOf(E) : 1);

template <class T>
constexpr Element elementOf = std::is_same_v<T, uint8_t>    ? Element::u8
                              : std::is_same_v<T, uint16_t> ? Element::u16
                              : std::is_same_v<T, int16_t>  ? Element::s16
                                                            : Element::f32;

constexpr int all(int width) { return width; }

template <class From, class To, ReducedLayout L, bool isDithered>
constexpr Export reducing(const char* name, Entry entry) {
    Export e{name,
             entry,
             layoutOf<elementOf<From>, L, isDithered>,
             layoutOf<elementOf<To>, L, isDithered>,
             {{1, 1}, {1, 1}},
             all,
             reduceBits<From, To, L>};
    constexpr bool toBytes = sizeof(To) == 1;
    if (isDithered) {
        e.slice.name = "_Dithered";
        e.parameters = toBytes ? std::span<const Parameters>(ditheredBytes) : ditheredWords;
    } else {
        e.parameters = toBytes ? std::span<const Parameters>(nearestByte) : nearestWord;
        e.isRowwise = true;
    }
    return e;
}

#define BOTH(depth, From, To, layout, token)                                                      \
    reducing<From, To, ReducedLayout::layout, false>(NAMED(zeliReduceBits_##depth##_##token##R)), \
        reducing<From, To, ReducedLayout::layout, true>(NAMED(zeliReduceBits_##depth##_##token##R))
#define LAYOUTS(depth, From, To) \
    BOTH(depth, From, To, c1, C1), BOTH(depth, From, To, c3, C3), BOTH(depth, From, To, ac4, AC4), BOTH(depth, From, To, c4, C4)

constexpr Export exports[] = {
    LAYOUTS(8u, uint8_t, uint8_t),     LAYOUTS(16u, uint16_t, uint16_t), LAYOUTS(16s, int16_t, int16_t),
    LAYOUTS(16u8u, uint16_t, uint8_t), LAYOUTS(16s8u, int16_t, uint8_t), LAYOUTS(32f8u, float, uint8_t),
    LAYOUTS(32f16u, float, uint16_t),  LAYOUTS(32f16s, float, int16_t),
};

}  // namespace

std::span<const Export> reduceBitsExports() { return exports; }

}  // namespace model
