// From the bytes of a row to vectors, a channel each, and to lines. A load is a type with `items`, how many pixels, pairs or
// sites a block has, `itemBytes`, `channels`, and `read`, which makes a vector or two of each channel.
#pragma once

#include "plan.h"
#include "simd/samples.h"
#include "video/lines.h"

namespace zel::ZEL_LEVEL::video {

using zelv::Layout;

// Asks for what is read some blocks after bytes of a row: words, and pixels of three or four bytes, come faster than a processor
// foresees them.
ZEL_INLINE void askAhead(const uint8_t* p, size_t bytes) {
    for (size_t i = 0; i < bytes; i += lineBytes) prefetch<Use::read>(p + 2048 + i, 1);
}

namespace loads {

// Samples at any place of a word, whatever stands beside them.
struct Placed {
    ZEL_INLINE explicit Placed(const zelv::Side& side)
        : shift(16 - side.depth - side.shift), mask(splatWord(0xffff << (16 - side.depth))) {}
    ZEL_INLINE Words operator()(Words v) const { return flipped(v << shift & mask); }

    int shift;
    Words mask;
};

struct Whole {
    ZEL_INLINE Words operator()(Words v) const { return flipped(v); }
};

// The even and the odd words of two vectors' worth of memory.
struct Split {
    Words even, odd;
};
ZEL_INLINE Split split(const void* p) {
    const PackOrder in = loadInPackOrder(static_cast<const uint8_t*>(p));
    const Dwords a = (Dwords)in.first, b = (Dwords)in.second;
    return {packWords(a << 16 >> 16, b << 16 >> 16), packWords(a >> 16, b >> 16)};
}
ZEL_INLINE Split split(Words first, Words second) {
    const Dwords a = (Dwords)first, b = (Dwords)second;
    return {evenWords(a, b), evenWords((Dwords)((UDwords)a >> 16), (Dwords)((UDwords)b >> 16))};
}

struct Bytes1 {
    static constexpr int items = words, itemBytes = 1, channels = 1;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const { v[0][0] = flipped(loadWidened(p) << 8); }
};

template <class Place>
struct Words1 {
    static constexpr int items = words, itemBytes = 2, channels = 1;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const { v[0][0] = place((Words)loadBytes(p)); }
    Place place;
};

// Pairs of samples; 4:2:2 in four samples are pairs of luma and chroma, and their chroma lines pairs again.
struct Bytes2 {
    static constexpr int items = words, itemBytes = 2, channels = 2;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const auto in = (Words)loadBytes(p);
        v[0][0] = flipped(in << 8);
        v[1][0] = flipped(in & splatWord(0xff00));
    }
};

template <class Place>
struct Words2 {
    static constexpr int items = words, itemBytes = 4, channels = 2;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const Split in = split(p);
        v[0][0] = place(in.even);
        v[1][0] = place(in.odd);
    }
    Place place;
};

struct Bytes3 {
    static constexpr int items = vectorBytes, itemBytes = 3, channels = 3;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const auto in = InterleavedThree<Depth8u>::load(p);
        const Bytes bytes[3] = {in.a, in.b, in.c};
        unrolled<3>([&](auto c) ZEL_INLINE_LAMBDA {
            const Bytes spread = spreadHalves(bytes[c]);
            v[c][0] = flipped((Words)interleaveLow(Bytes{}, spread));
            v[c][1] = flipped((Words)interleaveHigh(Bytes{}, spread));
        });
    }
};

template <class Place>
struct Words3 {
    static constexpr int items = words, itemBytes = 6, channels = 3;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const auto in = InterleavedThree<Depth16u>::load(p);
        v[0][0] = place((Words)in.a);
        v[1][0] = place((Words)in.b);
        v[2][0] = place((Words)in.c);
    }
    Place place;
};

struct Bytes4 {
    static constexpr int items = words, itemBytes = 4, channels = 4;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const PackOrder in = loadInPackOrder(p);
        const auto a = (UDwords)in.first, b = (UDwords)in.second, low = (UDwords)splatDword(0xff);
        unrolled<4>([&](auto c) ZEL_INLINE_LAMBDA {
            v[c][0] = flipped(packWords((Dwords)(a >> 8 * c & low), (Dwords)(b >> 8 * c & low)) << 8);
        });
    }
};

template <class Place>
struct Words4 {
    static constexpr int items = words, itemBytes = 8, channels = 4;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const auto part = [&](int i) { return (Words)loadBytes(p + i * vectorBytes); };
        const Split first = split(part(0), part(1)), second = split(part(2), part(3));
        const Split even = split(first.even, second.even), odd = split(first.odd, second.odd);
        v[0][0] = place(even.even);
        v[1][0] = place(odd.even);
        v[2][0] = place(even.odd);
        v[3][0] = place(odd.odd);
    }
    Place place;
};

struct Tens {
    static constexpr int items = words, itemBytes = 4, channels = 4;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const PackOrder in = loadInPackOrder(p);
        const auto a = (UDwords)in.first, b = (UDwords)in.second, low = (UDwords)splatDword(1023);
        unrolled<4>([&](auto c) ZEL_INLINE_LAMBDA {
            const Words sample = packWords((Dwords)(a >> 10 * c & low), (Dwords)(b >> 10 * c & low));
            v[c][0] = flipped(sample << (c == 3 ? 14 : 6));
        });
    }
};

// Floats as what is nearest of 65535 steps, whatever rounding is in force: cut off to 23 bits, those scaled, halves up.
struct Floats1 {
    static constexpr int items = words, itemBytes = 4, channels = 1;
    ZEL_INLINE void read(const uint8_t* p, Words (&v)[4][2]) const {
        const auto whole = [](Bytes v) {
            const Floats bounded = atMost(atLeast((Floats)v, Floats{}), splatFloat(1));
            const Dwords t = rounded(wholePart(bounded * splatFloat(8388608)));
            const Dwords steps = t - ((t + splatDword(32768)) >> 16);
            return ((steps + splatDword(64)) >> 7) - splatDword(32768);
        };
        const PackOrder in = loadInPackOrder(p);
        v[0][0] = packWords(whole(in.first), whole(in.second));
    }
};

template <class Load>
ZEL_INLINE void toLines(const Load& load, const uint8_t* p, uint16_t* const (&out)[4], int at) {
    Words v[4][2];
    load.read(p, v);
    unrolled<Load::channels>([&](auto c) ZEL_INLINE_LAMBDA {
        unrolled<Load::items / words>([&](auto part) ZEL_INLINE_LAMBDA { storeLine(out[c] + at + part * words, v[c][part]); });
    });
}

// All items, the last ones by a copy that ends with the block.
template <class Load>
ZEL_INLINE void run(const Load& load, const uint8_t* p, int count, uint16_t* const (&out)[4]) {
    constexpr int blockBytes = Load::items * Load::itemBytes;
    int i = 0;
    for (; i <= count - Load::items; i += Load::items) toLines(load, p + ptrdiff_t{i} * Load::itemBytes, out, i);
    if (i == count) return;
    alignas(64) uint8_t rest[blockBytes];
    __builtin_memset(rest, 0, sizeof rest);
    __builtin_memcpy(rest, p + ptrdiff_t{i} * Load::itemBytes, size_t(count - i) * Load::itemBytes);
    toLines(load, rest, out, i);
}

// By whether samples fill their words.
template <template <class> class Load>
ZEL_INLINE void runWords(const zelv::Side& side, const uint8_t* p, int count, uint16_t* const (&out)[4]) {
    if (side.depth == 16)
        run(Load<Whole>{}, p, count, out);
    else
        run(Load<Placed>{Placed(side)}, p, count, out);
}

ZEL_INLINE uint32_t dwordAt(const uint8_t* p) {
    uint32_t x;
    __builtin_memcpy(&x, p, 4);
    return x;
}

// Sample `i` of the row: U Y V Y and on, three in a dword.
ZEL_INLINE uint16_t v210Sample(const uint8_t* row, ptrdiff_t i) {
    const uint32_t sample = dwordAt(row + i / 3 * 4) >> i % 3 * 10 & 1023;
    return uint16_t((sample << 6) ^ 0x8000);
}

}  // namespace loads

// All channels of interleaved pixels, of the pixels from `first` on.
ZEL_NOINLINE inline void loadInterleaved(const zelv::Side& side, const uint8_t* row, int first, int count,
                                         uint16_t* const (&lines)[4]) {
    using namespace loads;
    // A line to which channels that nobody asked for go.
    Line unused;
    uint16_t* out[4] = {unused.at(0), unused.at(0), unused.at(0), unused.at(0)};
    const int channels = side.samples;
    for (int c = 0; c < 4; ++c)
        if (lines[c] && (c < 3 || channels == 4)) out[side.place[c]] = lines[c];
    const uint8_t* p = row + ptrdiff_t{first} * channels * (side.isFloat ? 4 : side.depth > 8 ? 2 : 1);
    if (side.layout == Layout::dwords) {
        run(Tens{}, row + ptrdiff_t{first} * 4, count, out);
    } else if (side.isFloat) {
        // Words of a part, still interleaved, and those as if they came from memory.
        constexpr int part = pieceLength / 4;
        Line interleaved;
        for (int i = 0; i < count; i += part) {
            const int n = count - i < part ? count - i : part;
            uint16_t* const all[4] = {interleaved.at(0)};
            run(Floats1{}, p + ptrdiff_t{i} * channels * 4, n * channels, all);
            for (int j = 0; j < n; ++j)
                for (int c = 0; c < channels; ++c) out[c][i + j] = *interleaved.at(j * channels + c);
        }
    } else if (channels == 3) {
        side.depth > 8 ? runWords<Words3>(side, p, count, out) : run(Bytes3{}, p, count, out);
    } else {
        side.depth > 8 ? runWords<Words4>(side, p, count, out) : run(Bytes4{}, p, count, out);
    }
}

// One plane of samples.
ZEL_NOINLINE inline void loadPlane(const zelv::Side& side, const uint8_t* row, int first, int count, uint16_t* line) {
    using namespace loads;
    uint16_t* const out[4] = {line};
    if (side.isFloat)
        run(Floats1{}, row + ptrdiff_t{first} * 4, count, out);
    else if (side.depth > 8)
        runWords<Words1>(side, row + ptrdiff_t{first} * 2, count, out);
    else
        run(Bytes1{}, row + first, count, out);
}

// A plane of pairs.
ZEL_NOINLINE inline void loadPairs(const zelv::Side& side, const uint8_t* row, int first, int count, uint16_t* a, uint16_t* b) {
    using namespace loads;
    uint16_t* const out[4] = {a, b};
    if (side.depth > 8)
        runWords<Words2>(side, row + ptrdiff_t{first} * 4, count, out);
    else
        run(Bytes2{}, row + ptrdiff_t{first} * 2, count, out);
}

// Luma of paired 4:2:2.
ZEL_INLINE void loadPairedLuma(const zelv::Side& side, const uint8_t* row, int first, int count, uint16_t* line) {
    if (side.layout == Layout::v210) {
        for (int i = 0; i < count; ++i) line[i] = loads::v210Sample(row, 2 * ptrdiff_t{first + i} + 1);
        return;
    }
    Line other;
    const bool lumaFirst = side.place[0] == 0;
    loadPairs(side, row, first, count, lumaFirst ? line : other.at(0), lumaFirst ? other.at(0) : line);
}

// Chroma of paired 4:2:2, by sites.
ZEL_INLINE void loadPairedChroma(const zelv::Side& side, const uint8_t* row, int first, int count, uint16_t* u, uint16_t* v) {
    if (side.layout == Layout::v210) {
        for (int i = 0; i < count; ++i) {
            u[i] = loads::v210Sample(row, 4 * ptrdiff_t{first + i});
            v[i] = loads::v210Sample(row, 4 * ptrdiff_t{first + i} + 2);
        }
        return;
    }
    Line other, chroma[2];
    const bool lumaFirst = side.place[0] == 0, uFirst = side.place[1] < side.place[2];
    constexpr int part = pieceLength / 2;
    for (int i = 0; i < count; i += part) {
        const int n = count - i < part ? count - i : part;
        uint16_t* const c = chroma[0].at(0);
        loadPairs(side, row, 2 * (first + i), 2 * n, lumaFirst ? other.at(0) : c, lumaFirst ? c : other.at(0));
        uint16_t* const out[4] = {(uFirst ? u : v) + i, (uFirst ? v : u) + i};
        struct AsTheyAre {
            ZEL_INLINE Words operator()(Words x) const { return x; }
        };
        loads::run(loads::Words2<AsTheyAre>{}, reinterpret_cast<const uint8_t*>(c), n, out);
    }
}

}  // namespace zel::ZEL_LEVEL::video
