// Words made of others, by lanes and shuffles: for levels that have nothing better.
#pragma once

#include "simd/words/crossing.h"
#include "simd/words/integers.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE PackOrder loadInPackOrder(const uint8_t* p) { return {loadLanes(p, 32), loadLanes(p + 16, 32)}; }

template <bool deals>
ZEL_INLINE Parted loadParted(const uint8_t* p) {
    alignas(16) constexpr uint8_t evenThenOdd[16] = {0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15};
    const PackOrder pairs =
        deals ? PackOrder{spreadHalves(loadBytes(p)), spreadHalves(loadBytes(p + vectorBytes))} : loadInPackOrder(p);
    const Bytes pattern = everyLane(evenThenOdd), first = shuffle(pairs.first, pattern), second = shuffle(pairs.second, pattern);
    return {interleaveLow64(first, second), interleaveHigh64(first, second)};
}

ZEL_INLINE void storeInterleaved(Destination p, Bytes a, Bytes b) {
    storeLanesInTurn(p, interleaveLow(a, b), interleaveHigh(a, b));
}

ZEL_INLINE Words evenWords(Dwords a, Dwords b) {
    return (Words)lowThenHighHalves((Bytes)packWords(a << 16 >> 16, b << 16 >> 16));
}

ZEL_INLINE void storeLowWords(uint8_t* p, Dwords v) {
    const Dwords words = v << 16 >> 16;
    storeLowHalves(p, (Bytes)packWords(words, words));
}

ZEL_INLINE Bytes choose(Bits bits, Bytes a, Bytes b) {
    // Byte i of the bits goes to the elements 8i .. 8i + 7, which test a bit each.
    struct Places {
        alignas(vectorBytes) uint8_t eighths[vectorBytes];
        alignas(16) uint8_t tested[16];
    };
    static constexpr Places places = [] {
        Places p{};
        for (int i = 0; i < vectorBytes; ++i) p.eighths[i] = uint8_t(i / 8);
        for (int i = 0; i < 16; ++i) p.tested[i] = uint8_t(1 << i % 8);
        return p;
    }();
    const Bytes bit = everyLane(places.tested);
    const Bytes isSet = (Bytes)((shuffle((Bytes)splatDword(int32_t(bits)), loadBytes(places.eighths)) & bit) == bit);
    return (a & isSet) | (b & ~isSet);
}
ZEL_INLINE UWords choose(Bits bits, UWords a, UWords b) {
    struct Places {
        alignas(vectorBytes) uint16_t tested[vectorBytes / 2];
    };
    static constexpr Places places = [] {
        Places p{};
        for (int i = 0; i < vectorBytes / 2; ++i) p.tested[i] = static_cast<uint16_t>(1 << i);
        return p;
    }();
    const UWords bit = (UWords)loadBytes(places.tested), isSet = (UWords)(((UWords)splatWord(int(bits)) & bit) == bit);
    return (a & isSet) | (b & ~isSet);
}

ZEL_INLINE Bits zeros(Bytes v) { return signBits((Bytes)(v == Bytes{})); }

}  // namespace zel::ZEL_LEVEL
