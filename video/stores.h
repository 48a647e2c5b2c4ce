// From lines of a destination's samples to the bytes of a row. A store is a type with `items`, `itemBytes` and `block`, as loads
// are.
#pragma once

#include "plan.h"
#include "simd/samples.h"
#include "video/lines.h"

namespace zel::ZEL_LEVEL::video {

using zelv::Layout;

namespace stores {

ZEL_INLINE Bytes packedBytes(const uint16_t* line) {
    const PackOrder in = loadInPackOrder(reinterpret_cast<const uint8_t*>(line));
    return packBytes((Words)in.first, (Words)in.second);
}

// The words of a and b in turn, in order over two vectors.
ZEL_INLINE void storeInterleavedWords(Destination p, Words a, Words b) {
    a = (Words)spreadHalves((Bytes)a);
    b = (Words)spreadHalves((Bytes)b);
    storeVector(p, interleaveLow(a, b));
    storeVector(p + vectorBytes, interleaveHigh(a, b));
}

struct Bytes1 {
    static constexpr int items = vectorBytes, itemBytes = 1;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        storeVector(p, packedBytes(in[0] + at));
    }
};

struct Words1 {
    static constexpr int items = words, itemBytes = 2;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        storeVector(p, loadLine(in[0] + at) << shift);
    }
    int shift;
};

struct Bytes2 {
    static constexpr int items = words, itemBytes = 2;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        storeVector(p, loadLine(in[0] + at) | loadLine(in[1] + at) << 8);
    }
};

struct Words2 {
    static constexpr int items = words, itemBytes = 4;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        storeInterleavedWords(p, loadLine(in[0] + at) << shift, loadLine(in[1] + at) << shift);
    }
    int shift;
};

struct Bytes3 {
    static constexpr int items = vectorBytes, itemBytes = 3;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        InterleavedThree<Depth8u>::store(p, {packedBytes(in[0] + at), packedBytes(in[1] + at), packedBytes(in[2] + at)});
    }
};

struct Words3 {
    static constexpr int items = words, itemBytes = 6;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        const auto channel = [&](int c) { return loadLine(in[c] + at) << shift; };
        InterleavedThree<Depth16u>::store(p, {channel(0), channel(1), channel(2)});
    }
    int shift;
};

struct Bytes4 {
    static constexpr int items = vectorBytes, itemBytes = 4;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        const Channels<Bytes> three{packedBytes(in[0] + at), packedBytes(in[1] + at), packedBytes(in[2] + at)};
        storeFour<1>(p, three, packedBytes(in[3] + at));
    }
};

struct Words4 {
    static constexpr int items = words, itemBytes = 8;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        const auto channel = [&](int c) { return loadLine(in[c] + at) << shift; };
        storeFour<2>(p, Channels<Words>{channel(0), channel(1), channel(2)}, channel(3));
    }
    int shift;
};

struct Tens {
    static constexpr int items = vectorBytes / 4, itemBytes = 4;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        const auto channel = [&](int c) { return loadWordsAsDwords(reinterpret_cast<const uint8_t*>(in[c] + at)); };
        storeVector(p, channel(0) | channel(1) << 10 | channel(2) << 20 | channel(3) << 30);
    }
};

// Paired 4:2:2, by pixels: luma and chroma in turn, the chroma line having U and V in turn.
struct PairedBytes {
    static constexpr int items = words, itemBytes = 2;
    ZEL_INLINE void block(const uint16_t* const (&in)[4], int at, Destination p) const {
        storeVector(p, loadLine(in[0] + at) << lumaShift | loadLine(in[1] + at) << (8 - lumaShift));
    }
    int lumaShift;
};

template <class Store>
ZEL_INLINE void run(const Store& store, const uint16_t* const (&in)[4], int count, uint8_t* p) {
    constexpr int blockBytes = Store::items * Store::itemBytes;
    int i = 0;
    for (; i + Store::items <= count; i += Store::items) store.block(in, i, p + ptrdiff_t{i} * Store::itemBytes);
    if (i == count) return;
    alignas(64) uint8_t rest[blockBytes];
    store.block(in, i, rest);
    __builtin_memcpy(p + ptrdiff_t{i} * Store::itemBytes, rest, size_t(count - i) * Store::itemBytes);
}

}  // namespace stores

ZEL_NOINLINE inline void storePlane(const zelv::Side& side, const uint16_t* line, uint8_t* row, int first, int count) {
    using namespace stores;
    const uint16_t* const in[4] = {line};
    if (side.depth > 8)
        run(Words1{side.shift}, in, count, row + ptrdiff_t{first} * 2);
    else
        run(Bytes1{}, in, count, row + first);
}

ZEL_NOINLINE inline void storePairs(const zelv::Side& side, const uint16_t* a, const uint16_t* b, uint8_t* row, int first,
                                    int count) {
    using namespace stores;
    const uint16_t* const in[4] = {a, b};
    if (side.depth > 8)
        run(Words2{side.shift}, in, count, row + ptrdiff_t{first} * 4);
    else
        run(Bytes2{}, in, count, row + ptrdiff_t{first} * 2);
}

// Lines by channels.
ZEL_NOINLINE inline void storeInterleaved(const zelv::Side& side, const uint16_t* const (&lines)[4], uint8_t* row, int first,
                                          int count) {
    using namespace stores;
    const uint16_t* in[4] = {lines[0], lines[0], lines[0], lines[0]};
    for (int c = 0; c < side.samples; ++c) in[side.place[c]] = lines[c];
    if (side.layout == Layout::dwords)
        run(Tens{}, in, count, row + ptrdiff_t{first} * 4);
    else if (side.samples == 3)
        side.depth > 8 ? run(Words3{side.shift}, in, count, row + ptrdiff_t{first} * 6)
                       : run(Bytes3{}, in, count, row + ptrdiff_t{first} * 3);
    else
        side.depth > 8 ? run(Words4{side.shift}, in, count, row + ptrdiff_t{first} * 8)
                       : run(Bytes4{}, in, count, row + ptrdiff_t{first} * 4);
}

// Groups of six pixels. The last one of a row has zeros behind the last site.
ZEL_INLINE void storeV210(const uint16_t* y, const uint16_t* u, const uint16_t* v, uint8_t* row, int first, int count) {
    const auto sample = [&](ptrdiff_t i) -> uint32_t {  // of the row
        const ptrdiff_t pixel = i / 2 - first;
        if (pixel >= count + (count & 1)) return 0;
        return i % 2 != 0 ? y[pixel] : i % 4 == 0 ? u[pixel / 2] : v[pixel / 2];
    };
    const ptrdiff_t samples = (ptrdiff_t{first} + count + 5) / 6 * 12;
    for (ptrdiff_t i = ptrdiff_t{first} * 2; i < samples; i += 3) {
        const uint32_t dword = sample(i) | sample(i + 1) << 10 | sample(i + 2) << 20;
        __builtin_memcpy(row + i / 3 * 4, &dword, 4);
    }
}

ZEL_NOINLINE inline void storePaired(const zelv::Side& side, const uint16_t* y, const uint16_t* u, const uint16_t* v,
                                     uint8_t* row, int first, int count) {
    using namespace stores;
    if (side.layout == Layout::v210) {
        storeV210(y, u, v, row, first, count);
        return;
    }
    Line chroma;
    const int even = count + (count & 1);
    const bool lumaFirst = side.place[0] == 0, uFirst = side.place[1] < side.place[2];
    const uint16_t *c0 = uFirst ? u : v, *c1 = uFirst ? v : u;
    for (int i = 0; i < even; i += 2 * words)
        storeInterleavedWords(reinterpret_cast<uint8_t*>(chroma.at(i)), loadLine(c0 + i / 2), loadLine(c1 + i / 2));
    const uint16_t* const in[4] = {y, chroma.at(0)};
    if (side.depth > 8)
        storePairs(side, lumaFirst ? y : chroma.at(0), lumaFirst ? chroma.at(0) : y, row, first, even);
    else
        run(PairedBytes{lumaFirst ? 0 : 8}, in, even, row + ptrdiff_t{first} * 2);
}

// Channels of floats to memory, in the order of the planes or of the pixel's samples.
ZEL_INLINE void storeFloats(const zelv::Side& side, const float* const (&lines)[4], uint8_t* const (&rows)[4], int first,
                            int count) {
    const bool isPlanar = side.planes > 1;
    for (int c = 0; c < side.samples; ++c) {
        uint8_t* const p = rows[isPlanar ? side.place[c] : 0];
        const int stride = isPlanar ? 1 : side.samples, start = isPlanar ? 0 : side.place[c];
        for (int i = 0; i < count; ++i) __builtin_memcpy(p + (ptrdiff_t{first + i} * stride + start) * 4, lines[c] + i, 4);
    }
}

}  // namespace zel::ZEL_LEVEL::video
