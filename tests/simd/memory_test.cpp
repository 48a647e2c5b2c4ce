// Words that load and store vectors and parts of them.
#include "simd/check.h"
#include "simd/part.h"
#include "simd/strided.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr int half = vectorBytes / 2, quarter = vectorBytes / 4, stride = 40;
constexpr int reachOfLanes = (lanes - 1) * stride + laneBytes;

int asItIs(int i) { return i; }
int laneOfMemory(int i) { return i / laneBytes * stride + i % laneBytes; }
int laneOfVector(int i) { return i % stride < laneBytes ? i / stride * laneBytes + i % stride : kept; }

TEST(SimdMemory, Loads) {
    loads<1>(WORD(loadBytes), vectorBytes, asItIs);
    loads<1>(WORD(everyLane), laneBytes, [](int i) { return i % laneBytes; });
    loads<1>(Word{"loadLanes", [](const uint8_t* p) { return loadLanes(p, stride); }}, reachOfLanes, laneOfMemory);
    loads<1>(Word{"loadLanes backwards", [](const uint8_t* p) { return loadLanes(p + (lanes - 1) * stride, -stride); }},
             reachOfLanes, [](int i) { return (lanes - 1 - i / laneBytes) * stride + i % laneBytes; });
    loads<1>(Word{"loadLanesAt", [](const uint8_t* p) { return loadLanesAt([=](int l) { return p + l * stride; }); }},
             reachOfLanes, laneOfMemory);
    loads<8>(Word{"loadQwordsAt", [](const uint8_t* p) { return loadQwordsAt([=](int i) { return p + 16 * i; }); }},
             2 * vectorBytes - 8, [](int i) { return 2 * i; });
    loads<1>(WORD(loadWidened), half, [](int i) { return i % 2 ? none : i / 2; });
    loads<1>(WORD(loadBytesAsDwords), quarter, [](int i) { return i % 4 ? none : i / 4; });
    loads<1>(WORD(loadWordsAsDwords), half, [](int i) { return i % 4 < 2 ? i / 4 * 2 + i % 2 : none; });
    loads<1>(WORD(loadQuadrupled), quarter, [](int i) { return i / 4; });
    loads<laneBytes>(WORD(loadInPackOrder), 2 * vectorBytes, [](int i) { return i % lanes * 2 + i / lanes; });
    loads<1>(WORD(loadParted), 2 * vectorBytes, [](int i) { return i % vectorBytes * 2 + i / vectorBytes; });
    loads<1>(WORD(loadParted<true>), 2 * vectorBytes, [](int i) {
        const int place = i % vectorBytes, dealt = place % 16 / 4 * 8 + place / 16 * 4 + place % 4;
        return (lanes == 2 ? dealt : place) * 2 + i / vectorBytes;
    });
}

TEST(SimdMemory, PairsOfDoubles) {
    constexpr int n = vectorBytes / 8;
    alignas(16) double table[n][2];
    for (int i = 0; i < n; ++i) table[i][0] = i, table[i][1] = i + 0.5;
    const PairsOfDoubles pairs = loadPairsAt([&](int i) { return table[n - 1 - i]; });
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(pairs.first[i], n - 1 - i);
        EXPECT_EQ(pairs.second[i], n - 1 - i + 0.5);
    }
}

TEST(SimdMemory, Stores) {
    stores<1, Bytes>(WORD(storeVector), vectorBytes, asItIs);
    stores<1, Words>(WORD(storeVector), vectorBytes, asItIs);
    stores<1, Bytes>(Word{"storeVector by a pointer", [](uint8_t* p, Bytes v) { storeVector(p, v); }}, vectorBytes, asItIs);
    stores<1, Bytes>(Word{"storeLanes", [](Destination p, Bytes v) { storeLanes(p, stride, v); }}, reachOfLanes, laneOfVector);
    // The lanes are stored in order, so of two that overlap the later one stays.
    stores<1, Bytes>(Word{"storeLanes", [](Destination p, Bytes v) { storeLanes(p, 12, v); }}, 12 * (lanes - 1) + laneBytes,
                     [](int i) {
                         const int lane = i / 12 < lanes ? i / 12 : lanes - 1;
                         return lane * laneBytes + i - lane * 12;
                     });
    // To every other lane of memory, which a level may bypass the caches by.
    stores<laneBytes, Bytes>(Word{"storeLanes", [](Destination p, Bytes v) { storeLanes(p, 2 * laneBytes, v); }},
                             (2 * lanes - 1) * laneBytes, [](int i) { return i % 2 ? kept : i / 2; });
    stores<1, Bytes, Bytes>(Word{"storeVectors", [](Destination p, Bytes a, Bytes b) { storeVectors(p, a, b); }}, 2 * vectorBytes,
                            asItIs);
    const auto laneInTurn = [](int vectors) { return [=](int i) { return i % vectors * lanes + i / vectors; }; };
    stores<laneBytes, Bytes, Bytes>(
        Word{"storeLanesInTurn of 2", [](Destination p, Bytes a, Bytes b) { storeLanesInTurn(p, a, b); }}, 2 * vectorBytes,
        laneInTurn(2));
    stores<laneBytes, Bytes, Bytes, Bytes>(
        Word{"storeLanesInTurn of 3", [](Destination p, Bytes a, Bytes b, Bytes c) { storeLanesInTurn(p, a, b, c); }},
        3 * vectorBytes, laneInTurn(3));
    stores<laneBytes, Bytes, Bytes, Bytes, Bytes>(
        Word{"storeLanesInTurn of 4", [](Destination p, Bytes a, Bytes b, Bytes c, Bytes d) { storeLanesInTurn(p, a, b, c, d); }},
        4 * vectorBytes, laneInTurn(4));
    stores<8, Bytes>(Word{"storeHalves", [](uint8_t* p, Bytes v) { storeHalves(p, p + half + 8, v); }}, vectorBytes + 8,
                     [](int i) { return i < lanes    ? 2 * i
                                        : i == lanes ? kept
                                                     : 2 * (i - lanes - 1) + 1; });
    stores<8, Bytes>(WORD(storeLowHalves), half, [](int i) { return 2 * i; });
    stores<4, Bytes>(Word{"storeQuarters", [](uint8_t* p, Bytes v) { storeQuarters(p, p + quarter + 4, v); }}, half + 4,
                     [](int i) { return i < lanes    ? 4 * i
                                        : i == lanes ? kept
                                                     : 4 * (i - lanes - 1) + 2; });
    stores<1, Dwords>(WORD(storeLowBytes), quarter, [](int i) { return 4 * i; });
    stores<2, Dwords>(WORD(storeLowWords), half, [](int i) { return 2 * i; });
    stores<1, Bytes, Bytes>(WORD(storeInterleaved), 2 * vectorBytes, [](int i) { return i % 2 * vectorBytes + i / 2; });
}

TEST(SimdMemory, StoresThatAlwaysBypassTheCaches) {
    alignas(vectorBytes) uint8_t memory[3 * vectorBytes]{};
    std::array<uint8_t, vectorBytes> bytes;
    fill(bytes, 0);
    streamVector(memory + vectorBytes, loadBytes(bytes.data()));
    storeFence();
    for (int i = 0; i < int(sizeof memory); ++i)
        EXPECT_EQ(memory[i], i / vectorBytes == 1 ? bytes[i % vectorBytes] : 0) << "streamVector, byte " << i;
}

TEST(SimdMemory, MovesOfAnyLength) {
    uint8_t from[memoryBytes];
    fill(from, 0);
    for (const size_t bytes : {0, 1, 15, 64, 300}) {
        uint8_t to[memoryBytes]{};
        moveAtOnce(to + 3, from + 7, bytes);
        for (size_t i = 0; i < memoryBytes; ++i)
            EXPECT_EQ(to[i], i >= 3 && i - 3 < bytes ? from[i + 4] : 0) << bytes << " bytes, byte " << i;
    }
}

TEST(SimdMemory, DestinationsMove) {
    uint8_t* const p = reinterpret_cast<uint8_t*>(uintptr_t{1} << 16);
    for (const bool bypassing : {false, true}) {
        const Destination moved = Destination(p, bypassing) + 40 + -8;
        EXPECT_EQ(static_cast<uint8_t*>(moved), p + 32);
        EXPECT_EQ(moved.bypassing(), bypassing);
        EXPECT_TRUE(isMultiple(moved, 32));
        EXPECT_FALSE(isMultiple(moved, 64));
    }
    EXPECT_FALSE(Destination(p).bypassing());
}

TEST(SimdMemory, PrefetchesTouchNothing) {
    harness::GuardedMemory guarded;
    const auto memory = guarded.pages(memoryBytes);
    prefetch<Use::read>(memory.data() - 10, memory.size() + 1000);
    prefetch<Use::written>(memory.data() - 10, memory.size() + 1000);
    for (uint8_t byte : memory) ASSERT_EQ(byte, 0);
}

// Samples of `size` bytes, so many of them apart.
template <int size, int channels>
void movesStrided() {
    constexpr int distance = size * channels, reach = distance * (quarter - 1) + size;
    loads<1>(WORD(loadStrided<size, channels>), reach, [](int i) { return i % 4 < size ? i / 4 * distance + i % 4 : none; });
    stores<1, Dwords>(WORD(storeStrided<size, channels>), reach,
                      [](int i) { return i % distance < size ? i / distance * 4 + i % distance : kept; });
}

TEST(SimdMemory, Strided) {
    movesStrided<1, 1>();
    movesStrided<1, 3>();
    movesStrided<1, 4>();
    movesStrided<2, 1>();
    movesStrided<2, 3>();
    movesStrided<2, 4>();
    movesStrided<4, 1>();
    movesStrided<4, 3>();
    movesStrided<4, 4>();
}

TEST(SimdMemory, LooksUpDwordsInBothDirections) {
    constexpr int entries = 2 * vectorBytes;
    harness::GuardedMemory guarded;
    const auto memory = guarded.pages(memoryBytes);
    fill(memory, 1);
    const auto all = arrayOf<int32_t>(*reinterpret_cast<const std::array<uint8_t, 4 * entries>*>(memory.data()));
    for (int middle : {0, 7, entries - 1})
        for (int at = 0; at < entries; ++at) {
            Dwords places{};
            for (int i = 0; i < quarter; ++i) places[i] = (at + 5 * i) % entries - middle;
            const Dwords found = lookUp(memory.data() + 4 * middle, places);
            for (int i = 0; i < quarter; ++i) EXPECT_EQ(found[i], all[places[i] + middle]) << "lookUp of " << places[i];
        }
}

// From memory that ends where the bytes do, and where nothing stands before them, to `reach` bytes, of which those behind the
// copied ones become 0, or keep what they held.
template <class Copy>
void copies(const char* name, size_t bytes, size_t reach, int behind, Copy copy) {
    harness::GuardedMemory sources, destinations;
    const auto from = sources.pages(memoryBytes), to = destinations.pages(memoryBytes);
    for (const bool atEnd : {false, true}) {
        uint8_t* const source = atEnd ? from.data() + from.size() - bytes : from.data();
        uint8_t* const destination = atEnd ? to.data() + to.size() - reach : to.data();
        fill(to, 1);
        const std::vector<uint8_t> before(to.begin(), to.end());
        fill(from, 2);
        copy(destination, static_cast<const uint8_t*>(source));
        for (int i = 0; i < int(to.size()); ++i) {
            const int place = i - int(destination - to.data());
            const bool isCopied = place >= 0 && place < int(bytes), isBehind = place >= int(bytes) && place < int(reach);
            const int expected = isCopied ? source[place] : isBehind && behind == none ? 0 : before[i];
            if (!isExpected(name, " of " + std::to_string(bytes), place, to[i], expected)) return;
        }
    }
}

TEST(SimdMemory, Parts) {
    constexpr size_t longestShort = lanes == 4 ? vectorBytes - 1 : 4 * vectorBytes;
    for (size_t n = 0; n <= longestShort; ++n)
        copies("copyShort", n, n, kept, [=](uint8_t* to, const uint8_t* from) { copyShort(to, from, n); });
    for (size_t n = 0; n <= 5 * vectorBytes; ++n)
        copies("copyBytes", n, n, kept, [=](uint8_t* to, const uint8_t* from) { copyBytes(to, from, n); });
    for (size_t block : {vectorBytes, 2 * vectorBytes, 3 * vectorBytes})
        for (size_t n = 0; n <= block; ++n) {
            copies("copyToBuffer", n, block, none, [=](uint8_t* to, const uint8_t* from) { copyToBuffer(to, from, n, block); });
            copies("copyFromBuffer", n, n, kept, [=](uint8_t* to, const uint8_t* from) {
                alignas(vectorBytes) uint8_t buffer[4 * vectorBytes]{};
                for (size_t i = 0; i < n; ++i) buffer[i] = from[i];
                copyFromBuffer(to, buffer, n);
            });
        }
}

}  // namespace
}  // namespace zel::ZEL_LEVEL
