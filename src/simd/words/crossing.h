// Words that cross lanes, with and without memory. Of memory nothing is touched but what they say.
#pragma once

#include "simd/words/memory.h"

namespace zel::ZEL_LEVEL {

// The low halves of all lanes, then the high ones.
ZEL_INLINE Bytes lowThenHighHalves(Bytes v);
// The first half of the vector to the low halves of the lanes, the second one to the high halves.
ZEL_INLINE Bytes spreadHalves(Bytes v);
// The first dwords of all lanes, then the second ones, and so on: what two packs in turn have made of four vectors, in the order
// of those.
ZEL_INLINE Bytes inOrderOfQuarters(Bytes packed);
// One half of the vector a, then one of b.
template <int ofA, int ofB>
ZEL_INLINE Bytes joinHalves(Bytes a, Bytes b);
// Elements of v one place up; the lowest is the highest of `before`.
ZEL_INLINE Dwords movedUp(Dwords v, Dwords before);
// Of two vectors' worth of consecutive bytes those at even places, and those at odd ones.
ZEL_INLINE Bytes evenBytes(Bytes a, Bytes b);
ZEL_INLINE Bytes oddBytes(Bytes a, Bytes b);
// The low words of two vectors' worth of consecutive dwords.
ZEL_INLINE Words evenWords(Dwords a, Dwords b);

// Consecutive bytes or words, zero-extended: half a vector of bytes as words, a quarter of bytes as dwords, half of words as
// dwords.
ZEL_INLINE Words loadWidened(const uint8_t* p);
ZEL_INLINE UDwords loadBytesAsDwords(const uint8_t* p);
ZEL_INLINE UDwords loadWordsAsDwords(const uint8_t* p);

// Two vectors' worth of consecutive bytes, dealt out to two vectors in turn by lanes, so that a pack of the two is in order.
struct PackOrder {
    Bytes first, second;
};
ZEL_INLINE PackOrder loadInPackOrder(const uint8_t* p);

// Of two vectors' worth of consecutive bytes those at even places, and those at odd ones. Where there are two lanes they can be
// dealt out to them in turn by fours, rather than one half to each.
struct Parted {
    Bytes even, odd;
};
template <bool deals = false>
ZEL_INLINE Parted loadParted(const uint8_t* p);

// The first lanes of all vectors, then the second ones, and so on. Two halves make a whole vector, of which a processor stores as
// many in a time as of halves.
template <class... V>
ZEL_INLINE void storeLanesInTurn(Destination p, V... v) {
    constexpr int count = sizeof...(v);
    const Bytes of[count] = {v...};
    if constexpr (lanes == 2) {
        unrolled<count>([&](auto i) ZEL_INLINE_LAMBDA {
            constexpr int low = 2 * i, high = low + 1;
            storeVector(p + vectorBytes * i, joinHalves<low / count, high / count>(of[low % count], of[high % count]));
        });
    } else {
        for (int i = 0; i < count; ++i) storeLanes(p + laneBytes * i, laneBytes * count, of[i]);
    }
}

// The bytes of a and b in turn, two vectors' worth.
ZEL_INLINE void storeInterleaved(Destination p, Bytes a, Bytes b);

// The low and high halves of all lanes, each half brought together, to two places of half a vector.
ZEL_INLINE void storeHalves(uint8_t* low, uint8_t* high, Bytes v);
// The low halves of all lanes, to half a vector.
ZEL_INLINE void storeLowHalves(uint8_t* p, Bytes v);
// The dwords 0 and 2 of all lanes, each brought together, to two places of a quarter of a vector.
ZEL_INLINE void storeQuarters(uint8_t* first, uint8_t* second, Bytes v);
// The low byte of every dword, to a quarter of a vector; the low word, to half a vector.
ZEL_INLINE void storeLowBytes(uint8_t* p, Dwords v);
ZEL_INLINE void storeLowWords(uint8_t* p, Dwords v);

// Qword i from the 8 bytes at at(i).
template <class At>
ZEL_INLINE Bytes loadQwordsAt(const At& at);
// Double i of both from the two doubles at at(i), a multiple of 16.
struct PairsOfDoubles {
    Doubles first, second;
};
template <class At>
ZEL_INLINE PairsOfDoubles loadPairsAt(const At& at);

// The dwords of a table at some places, which may be negative.
ZEL_INLINE Dwords lookUp(const void* table, Dwords places);

}  // namespace zel::ZEL_LEVEL
