// Bytes by a table of all 256 results that is known when the library is compiled.
#pragma once

#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

struct ByteTable {
    alignas(16) uint8_t of[256];
};

// ByteLookup<table>       replace(samples) puts results in place of bytes, best of several vectors at a time
// MadeByteTable(table)    of a table that is made at the call; [places] are the results of a vector of bytes

}  // namespace zel::ZEL_LEVEL

#ifdef ZEL_OWN_BYTE_TABLE
#include ZEL_OWN_BYTE_TABLE
#else

namespace zel::ZEL_LEVEL {

// A byte shuffle finds a byte in a row of 16, and gives 0 for a negative place. So the places are counted down by a row at a
// time, and each row adds to what the rows before it gave the difference between itself and its predecessor. Places are signed:
// the bytes from 128 on start anew.
template <const ByteTable& table>
inline constexpr ByteTable rowDifferences = [] {
    ByteTable d = table;
    for (int i = 16; i < 256; ++i)
        if (i / 16 != 8) d.of[i] = static_cast<uint8_t>(table.of[i] ^ table.of[i - 16]);
    return d;
}();

// Best with several vectors at a time.
template <const ByteTable& table>
class ByteLookup {
  public:
    template <int count>
    ZEL_INLINE void replace(Bytes (&samples)[count]) const {
        Bytes results[count], places[count];
        unrolled<count>([&](int i) ZEL_INLINE_LAMBDA {
            results[i] = Bytes{};
            places[i] = samples[i];
        });
        addRows(rowDifferences<table>.of, places, results);
        unrolled<count>([&](int i) ZEL_INLINE_LAMBDA { places[i] = samples[i] ^ splatByte(0x80); });
        addRows(rowDifferences<table>.of + 128, places, results);
        unrolled<count>([&](int i) ZEL_INLINE_LAMBDA { samples[i] = results[i]; });
    }

  private:
    // Not unrolled: compilers then put the sums off and keep all their terms.
    template <int count>
    ZEL_INLINE static void addRows(const uint8_t* rows, Bytes (&places)[count], Bytes (&results)[count]) {
        for (const uint8_t* end = rows + 128; rows != end; rows += laneBytes) {
            const Bytes differences = everyLane(rows);
            unrolled<count>([&](int i) ZEL_INLINE_LAMBDA {
                results[i] ^= shuffle(differences, places[i]);
                places[i] = subtractSignedSaturated(places[i], splatByte(laneBytes));
            });
        }
    }
};

class MadeByteTable {
  public:
    ZEL_INLINE explicit MadeByteTable(const uint8_t (&table)[256]) {
        for (int i = 0; i < 256 / vectorBytes; ++i) parts_[i] = loadBytes(table + i * vectorBytes);
    }

    ZEL_INLINE Bytes operator[](Bytes places) const {
        alignas(vectorBytes) uint8_t bytes[vectorBytes];
        for (int i = 0; i < vectorBytes; ++i) bytes[i] = reinterpret_cast<const uint8_t*>(parts_)[places[i]];
        return loadBytes(bytes);
    }

  private:
    Bytes parts_[256 / vectorBytes];
};

}  // namespace zel::ZEL_LEVEL

#endif
