// Words of integers. Each stays inside its lane, so a wide vector is several narrow ones side by side. Elements are counted
// within a lane; "pairs" are the elements 2i and 2i + 1.
#pragma once

#include "simd/words/types.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE Bytes splatByte(uint8_t x);
// The low 16 bits of x.
ZEL_INLINE Words splatWord(int x);
ZEL_INLINE Dwords splatDword(int32_t x);
// Two in turn, the words by their low 16 bits.
ZEL_INLINE Words splatWords(int even, int odd);
ZEL_INLINE Dwords splatDwords(int32_t even, int32_t odd);

// floor(a b / 65536).
ZEL_INLINE Words mulHigh(Words a, Words b);
ZEL_INLINE UWords mulHigh(UWords a, UWords b);
// The same where the lower byte of every a is 0.
ZEL_INLINE UWords mulHighOfBytes(UWords a, UWords b);
// Of signed products the bits from droppedBits on: floor(a b / 2^droppedBits), not of two -32768. So that the result is the same
// everywhere, one factor is lifted by liftOf(bits), `bits` being those for a level that drops 16.
constexpr int droppedBits = traits.droppedBits;
constexpr int liftOf(int bits) { return bits - (16 - droppedBits); }
ZEL_INLINE Words mulTop(Words a, Words b);
// floor((a b + 16384) / 32768); of two -32768, which no word can hold, -32768 or 32767.
ZEL_INLINE Words mulRound(Words a, Words b);
// The bytes at even or at odd places, and the sums of pairs, times 2^bits; at most 6 bits.
template <int bits>
ZEL_INLINE Words evenTimes(Bytes a);
template <int bits>
ZEL_INLINE Words oddTimes(Bytes a);
template <int bits>
ZEL_INLINE Words pairSums(Bytes a);
// The sum of both products of a pair; where all four are -32768 it wraps, to the lowest dword.
ZEL_INLINE Dwords mulAddPairs(Words a, Words b);
// The sum of both products of a pair of unsigned and signed bytes, saturated to a word.
ZEL_INLINE Words mulAddBytes(Bytes a, Bytes signedBytes);

// Signed elements of a, then those of b, saturated to narrower ones: unsigned bytes, signed bytes, signed words.
ZEL_INLINE Bytes packBytes(Words a, Words b);
ZEL_INLINE Bytes packSignedBytes(Words a, Words b);
ZEL_INLINE Words packWords(Dwords a, Dwords b);
// To unsigned bytes, each without its last bits: floor(x / 2^bits), and the number nearest to x / 2^bits, the higher one of two.
template <int bits>
ZEL_INLINE Bytes packShifted(Words a, Words b);
template <int bits>
ZEL_INLINE Bytes packRounded(Words a, Words b);
// To unsigned words: below 0 they are 0, above 65535 they are 65535 where traits.packsUnsignedWords, and otherwise must not be.
ZEL_INLINE Words packUnsignedWords(Dwords a, Dwords b);

// Without the sign; the lowest number stays as it is.
ZEL_INLINE Words absolute(Words v);
ZEL_INLINE Dwords absolute(Dwords v);

// Unsigned sums, at most the highest number.
ZEL_INLINE Bytes addSaturated(Bytes a, Bytes b);
ZEL_INLINE UWords addSaturated(UWords a, UWords b);
// Unsigned differences, 0 where b is the greater one.
ZEL_INLINE Bytes subtractSaturated(Bytes a, Bytes b);
ZEL_INLINE UWords subtractSaturated(UWords a, UWords b);
// Differences of signed numbers, between the lowest and the highest one.
ZEL_INLINE Bytes subtractSignedSaturated(Bytes a, Bytes b);
ZEL_INLINE Words subtractSignedSaturated(Words a, Words b);

// The lesser and the greater one of unsigned bytes or of signed words, named for what they do to v.
ZEL_INLINE Bytes atMost(Bytes v, Bytes limit);
ZEL_INLINE Bytes atLeast(Bytes v, Bytes limit);
ZEL_INLINE Words atMost(Words v, Words limit);
ZEL_INLINE Words atLeast(Words v, Words limit);

// floor((a + b + 1) / 2), the sum as wide as it takes.
ZEL_INLINE Bytes mean(Bytes a, Bytes b);
ZEL_INLINE UWords mean(UWords a, UWords b);

// Words of a lane where they are: word i of b where bit i of `places` is set, that of a elsewhere.
template <int places>
ZEL_INLINE Words blend(Words a, Words b);

// The high words of the dwords of a and b in turn.
ZEL_INLINE Words highWords(Dwords a, Dwords b);

// a where the bytes of `which` are 0xff, b where they are 0; of other bytes any number.
ZEL_INLINE Bytes choose(Bytes which, Bytes a, Bytes b);

// Elements of the low or the high half of each lane of a and b in turn, a first.
ZEL_INLINE Bytes interleaveLow(Bytes a, Bytes b);
ZEL_INLINE Bytes interleaveHigh(Bytes a, Bytes b);
ZEL_INLINE Words interleaveLow(Words a, Words b);
ZEL_INLINE Words interleaveHigh(Words a, Words b);
ZEL_INLINE Dwords interleaveLow(Dwords a, Dwords b);
ZEL_INLINE Dwords interleaveHigh(Dwords a, Dwords b);
ZEL_INLINE Bytes interleaveLow64(Bytes a, Bytes b);
ZEL_INLINE Bytes interleaveHigh64(Bytes a, Bytes b);

// The dwords at even places of the lanes of a, then of b; and those at odd places.
ZEL_INLINE Dwords evenDwords(Dwords a, Dwords b);
ZEL_INLINE Dwords oddDwords(Dwords a, Dwords b);
// One qword of each lane of a, then one of b.
template <int ofA, int ofB>
ZEL_INLINE Bytes joinQwords(Bytes a, Bytes b);

// The 16 bytes from byte `place` on, of a lane of `low` with that of `high` behind it.
template <int place>
ZEL_INLINE Bytes window(Bytes low, Bytes high);

// Bytes of a by the places in pattern: byte place % 16, and 0 where the place is above 127.
ZEL_INLINE Bytes shuffle(Bytes a, Bytes pattern);

// A bit for each element, the lowest for the first: the highest one of the element, which is its sign. The others are 0.
ZEL_INLINE Bits signBits(Bytes v);
ZEL_INLINE unsigned signBits(Dwords v);
// Whether a byte is 0.
ZEL_INLINE Bits zeros(Bytes v);
// Whether floats differ in any bit.
ZEL_INLINE unsigned differing(Floats a, Floats b);

// The elements of a where the bit is set, otherwise those of b. Words have the low half of the bits; the other half is any.
ZEL_INLINE Bytes choose(Bits bits, Bytes a, Bytes b);
ZEL_INLINE UWords choose(Bits bits, UWords a, UWords b);

}  // namespace zel::ZEL_LEVEL
