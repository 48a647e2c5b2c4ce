// Words that only move what is in vectors: which byte of the operands comes where.
#include "simd/check.h"
#include "simd/pixel_dwords.h"
#include "simd/transposed.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {
namespace {

// A vector's elements of so many bytes, and a lane's.
constexpr int perVector(int size) { return vectorBytes / size; }
constexpr int perLane(int size) { return laneBytes / size; }

// By lanes, from a half of each lane of two vectors in turn.
template <int size>
auto interleaved(int half) {
    return [=](int i) {
        const int n = perLane(size);
        return i % 2 * perVector(size) + i / n * n + half * n / 2 + i % n / 2;
    };
}

// By lanes, every other element of the first operand, then of the second.
template <int size>
auto parted(int odd) {
    return [=](int i) {
        const int n = perLane(size), ofLane = i % n;
        return ofLane / (n / 2) * perVector(size) + i / n * n + ofLane % (n / 2) * 2 + odd;
    };
}

TEST(SimdPermutations, Interleaves) {
    moves<1, Bytes, Bytes>(WORD(interleaveLow), interleaved<1>(0));
    moves<1, Bytes, Bytes>(WORD(interleaveHigh), interleaved<1>(1));
    moves<2, Words, Words>(WORD(interleaveLow), interleaved<2>(0));
    moves<2, Words, Words>(WORD(interleaveHigh), interleaved<2>(1));
    moves<4, Dwords, Dwords>(WORD(interleaveLow), interleaved<4>(0));
    moves<4, Dwords, Dwords>(WORD(interleaveHigh), interleaved<4>(1));
    moves<8, Bytes, Bytes>(WORD(interleaveLow64), interleaved<8>(0));
    moves<8, Bytes, Bytes>(WORD(interleaveHigh64), interleaved<8>(1));
}

TEST(SimdPermutations, WithinLanes) {
    moves<4, Dwords, Dwords>(WORD(evenDwords), parted<4>(0));
    moves<4, Dwords, Dwords>(WORD(oddDwords), parted<4>(1));
    const auto blended = [](int places) { return [=](int i) { return (places >> i % 8 & 1) * perVector(2) + i; }; };
    moves<2, Words, Words>(WORD(blend<0xaa>), blended(0xaa));
    moves<2, Words, Words>(WORD(blend<0x92>), blended(0x92));
    moves<2, Words, Words>(WORD(blend<0x24>), blended(0x24));
    moves<2, Words, Words>(WORD(blend<0x49>), blended(0x49));
    const auto joined = [](int ofA, int ofB) { return [=](int i) { return i % 2 ? perVector(8) + i - 1 + ofB : i + ofA; }; };
    moves<8, Bytes, Bytes>(WORD(joinQwords<0, 0>), joined(0, 0));
    moves<8, Bytes, Bytes>(WORD(joinQwords<0, 1>), joined(0, 1));
    moves<8, Bytes, Bytes>(WORD(joinQwords<1, 0>), joined(1, 0));
    moves<8, Bytes, Bytes>(WORD(joinQwords<1, 1>), joined(1, 1));
    const auto joinedHalves = [](int ofA, int ofB) { return [=](int i) { return i == 0 ? ofA : 2 + ofB; }; };
    moves<vectorBytes / 2, Bytes, Bytes>(WORD(joinHalves<0, 0>), joinedHalves(0, 0));
    moves<vectorBytes / 2, Bytes, Bytes>(WORD(joinHalves<0, 1>), joinedHalves(0, 1));
    moves<vectorBytes / 2, Bytes, Bytes>(WORD(joinHalves<1, 0>), joinedHalves(1, 0));
    moves<vectorBytes / 2, Bytes, Bytes>(WORD(joinHalves<1, 1>), joinedHalves(1, 1));
    const auto windowFrom = [](int first) {
        return [=](int i) {
            const int place = i % laneBytes + first;
            return place / laneBytes * vectorBytes + i / laneBytes * laneBytes + place % laneBytes;
        };
    };
    moves<1, Bytes, Bytes>(WORD(window<4>), windowFrom(4));
    moves<1, Bytes, Bytes>(WORD(window<8>), windowFrom(8));
    moves<1, Bytes, Bytes>(WORD(window<12>), windowFrom(12));
    moves<1, Bytes>(WORD(evenBytes), [](int i) { return i % 2 ? none : i; });
    moves<1, Bytes>(WORD(oddBytes), [](int i) { return i % 2 ? none : i + 1; });
    moves<1, Bytes>(WORD(lowBytes), [](int i) { return i % 2 ? none : i / 16 * 16 + i % 16 / 2; });
    moves<1, Bytes>(WORD(highBytes), [](int i) { return i % 2 ? none : i / 16 * 16 + 8 + i % 16 / 2; });
    moves<2, Dwords, Dwords>(WORD(highWords), [](int i) { return i % 2 * perVector(2) + i / 2 * 2 + 1; });
    const auto placeOf = [](int place) { return [=](int i) { return i / 4 * 4 + place; }; };
    moves<4, Floats>(WORD(everyOf<0>), placeOf(0));
    moves<4, Floats>(WORD(everyOf<1>), placeOf(1));
    moves<4, Floats>(WORD(everyOf<2>), placeOf(2));
    moves<4, Floats>(WORD(everyOf<3>), placeOf(3));
    struct Rows {
        Dwords row[4];
    };
    const Word transposing{"transpose", [](Rows rows) {
                               transpose(rows.row);
                               return rows;
                           }};
    moves<4, Rows>(transposing, [](int i) {
        const int row = i / perVector(4), lane = i % perVector(4) / 4;
        return i % 4 * perVector(4) + lane * 4 + row;
    });
}

TEST(SimdPermutations, AcrossLanes) {
    moves<8, Bytes>(WORD(lowThenHighHalves), [](int i) { return i % lanes * 2 + i / lanes; });
    moves<8, Bytes>(WORD(spreadHalves), [](int i) { return i % 2 * lanes + i / 2; });
    moves<4, Bytes>(WORD(inOrderOfQuarters), [](int i) { return i % lanes * 4 + i / lanes; });
    moves<2, Dwords, Dwords>(WORD(evenWords), [](int i) { return 2 * i; });
    moves<1, Bytes, Bytes>(WORD(evenBytes), [](int i) { return 2 * i; });
    moves<1, Bytes, Bytes>(WORD(oddBytes), [](int i) { return 2 * i + 1; });
    moves<4, Dwords, Dwords>(WORD(movedUp), [](int i) { return i == 0 ? 2 * perVector(4) - 1 : i - 1; });
    struct Four {
        Dwords of[4];
    };
    const Word packed{"inOrderOfQuarters of packs", [](Four v) {
                          for (Dwords& x : v.of) x &= 0xff;
                          return inOrderOfQuarters(packBytes(packWords(v.of[0], v.of[1]), packWords(v.of[2], v.of[3])));
                      }};
    moves<1, Four>(packed, [](int i) { return 4 * i; });
}

}  // namespace
}  // namespace zel::ZEL_LEVEL
