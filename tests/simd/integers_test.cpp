// Words of integers, element by element.
#include <algorithm>
#include <cstdlib>

#include "simd/check.h"
#include "simd/expectations.h"
#include "simd/floats.h"
#include "simd/picked.h"

namespace zel::ZEL_LEVEL {
namespace {

template <class E>
E saturated(int64_t x) {
    return E(std::clamp<int64_t>(x, std::numeric_limits<E>::min(), std::numeric_limits<E>::max()));
}
int8_t asSigned(uint8_t x) { return int8_t(x); }

TEST(SimdIntegers, ElementByElement) {
    const auto least = [](int a, int b) { return std::min(a, b); };
    const auto greatest = [](int a, int b) { return std::max(a, b); };
    each<Bytes>(WORD(atMost), least);
    each<Words>(WORD(atMost), least);
    each<Bytes>(WORD(atLeast), greatest);
    each<Words>(WORD(atLeast), greatest);

    each<Words>(WORD(absolute), [](int a) { return std::abs(a); });
    each<Dwords>(WORD(absolute), [](int64_t a) { return std::abs(a); });
    each<Bytes>(WORD(addSaturated), [](int a, int b) { return saturated<uint8_t>(a + b); });
    each<UWords>(WORD(addSaturated), [](int a, int b) { return saturated<uint16_t>(a + b); });
    each<Bytes>(WORD(subtractSaturated), [](int a, int b) { return saturated<uint8_t>(a - b); });
    each<UWords>(WORD(subtractSaturated), [](int a, int b) { return saturated<uint16_t>(a - b); });
    // A table of bytes counts its places down by it, and relies on those that are too low staying so.
    each<Bytes>(WORD(subtractSignedSaturated), [](int a, int b) { return saturated<int8_t>(asSigned(a) - asSigned(b)); });
    each<Words>(WORD(subtractSignedSaturated), [](int a, int b) { return saturated<int16_t>(a - b); });
    each<Bytes>(WORD(distance), [](int a, int b) { return std::abs(a - b); });
    each<UWords>(WORD(distance), [](int a, int b) { return std::abs(a - b); });
    each<Bytes>(WORD(mean), [](int a, int b) { return (a + b + 1) / 2; });
    each<UWords>(WORD(mean), [](int a, int b) { return (a + b + 1) / 2; });
    each<UWords>(WORD(meanBelow), [](int a, int b) { return (a + b) / 2; });

    each<Words>(WORD(mulHigh), [](int a, int b) { return (a * b) >> 16; });
    each<UWords>(WORD(mulHigh), [](uint32_t a, uint32_t b) { return (a * b) >> 16; });
    each<UWords>(Word("mulHighOfBytes", [](UWords a, UWords b) { return mulHighOfBytes(a & 0xff00, b); }),
                 [](uint32_t a, uint32_t b) { return ((a & 0xff00) * b) >> 16; });
    each<Words>(WORD(mulRound), [](int a, int b) {
        return a == -32768 && b == -32768 ? roundedProductOfLowest() : int16_t((a * b + 0x4000) >> 15);
    });

    // Not of two of the lowest, which a level may make anything of.
    each<Words>(Word{"mulTop", [](Words a, Words b) { return mulTop(a, b == -32768 ? b + 1 : b); }},
                [](int a, int b) { return (a * std::max(b, -32767)) >> droppedBits; });

    each<Dwords>(WORD(computed), [](int32_t a) { return a; });
    each<Bytes>(WORD(computed), [](uint8_t a) { return a; });
}

// Elements of a lane, by their places in the vectors of which there are `perLane` in one.
template <class V>
constexpr int perLane = laneBytes / int(sizeof(Element<V>));

TEST(SimdIntegers, OfNeighbours) {
    compare<Words, 2>(WORD(mulAddPairs), [](int i, const auto& x) {
        const auto product = [&](int at) { return int64_t{x[at]} * x[elements<Words> + at]; };
        return uint32_t(product(2 * i) + product(2 * i + 1));
    });
    // The first factors are unsigned, the second ones signed, and the sum saturates.
    compare<Bytes, 2>(WORD(mulAddBytes), [](int i, const auto& x) {
        const auto product = [&](int at) { return x[at] * asSigned(x[elements<Bytes> + at]); };
        return saturated<int16_t>(product(2 * i) + product(2 * i + 1));
    });
    EXPECT_EQ(liftOf(7) + 16, 7 + droppedBits);
    const auto times = [](int bits, int first, int second) {
        return [=](int i, const auto& x) { return (first * x[2 * i] + second * x[2 * i + 1]) << bits; };
    };
    const auto centred = [](int bits, int place) {
        return [=](int i, const auto& x) { return int16_t((x[2 * i + place] - 128) * (1 << bits)); };
    };
    compare<Bytes, 1>(Word{"evenTimes", [](Bytes a) { return evenTimes<6>(a); }}, times(6, 1, 0));
    compare<Bytes, 1>(Word{"oddTimes", [](Bytes a) { return oddTimes<6>(a); }}, times(6, 0, 1));
    compare<Bytes, 1>(Word{"pairSums", [](Bytes a) { return pairSums<0>(a); }}, times(0, 1, 1));
    compare<Bytes, 1>(Word{"pairSums", [](Bytes a) { return pairSums<6>(a); }}, times(6, 1, 1));
    for (const bool even : {true, false}) {
        compare<Bytes, 1>(Word{"Picked::of", [=](Bytes a) { return Picked<0>(even).of(a); }}, times(0, even, !even));
        compare<Bytes, 1>(Word{"Picked::of", [=](Bytes a) { return Picked<6>(even).of(a); }}, times(6, even, !even));
        compare<Bytes, 1>(Word{"Picked::centred", [=](Bytes a) { return Picked<2>(even).centred(a); }}, centred(2, !even));
        compare<Bytes, 1>(Word{"Picked::centred", [=](Bytes a) { return Picked<7>(even).centred(a); }}, centred(7, !even));
    }
    compare<Words, 1>(WORD(lowWords), [](int i, const auto& x) { return x[i / 4 * 8 + i % 4]; });
    compare<Words, 1>(WORD(highWords), [](int i, const auto& x) { return x[i / 4 * 8 + 4 + i % 4]; });
}

// Packs: by lanes, what comes of the first operand before what comes of the second.
template <class V, class F, class Narrowed>
void packs(const Word<F>& word, Narrowed narrowed) {
    constexpr int n = perLane<V>;
    compare<V, 2>(word, [&](int i, const auto& x) {
        const int lane = i / (2 * n), ofLane = i % (2 * n);
        const int first = ofLane < n ? 0 : elements<V>;
        return narrowed(x[first + lane * n + ofLane % n]);
    });
}

TEST(SimdIntegers, Packs) {
    packs<Words>(WORD(packBytes), saturated<uint8_t>);
    packs<Words>(WORD(packSignedBytes), [](int x) { return uint8_t(saturated<int8_t>(x)); });
    packs<Words>(Word{"packShifted", [](Words a, Words b) { return packShifted<6>(a, b); }},
                 [](int x) { return saturated<uint8_t>(x >> 6); });
    packs<Words>(Word{"packRounded", [](Words a, Words b) { return packRounded<5>(a, b); }},
                 [](int x) { return saturated<uint8_t>((x + 16) >> 5); });
    packs<Dwords>(WORD(packWords), saturated<int16_t>);
    // Not of what is above 65535, which a level may make anything of.
    packs<Dwords>(
        Word{"packUnsignedWords",
             [](Dwords a, Dwords b) { return packUnsignedWords(a >= 65536 ? a & 65535 : a, b >= 65536 ? b & 65535 : b); }},
        [](int x) { return int16_t(x < 0 ? 0 : x & 65535); });
}

TEST(SimdIntegers, Shuffle) {
    // Every place everywhere. Of the numbers below 128 the last four bits count.
    for (int first = 0; first < 256; ++first) {
        Bytes pattern;
        for (int i = 0; i < vectorBytes; ++i) pattern[i] = uint8_t(first + i);
        moves<1, Bytes>(Word{"shuffle", [=](Bytes a) { return shuffle(a, pattern); }}, [=](int i) {
            const int place = (first + i) % 256;
            return place > 127 ? none : i / laneBytes * laneBytes + place % laneBytes;
        });
    }
}

TEST(SimdIntegers, Splats) {
    const auto all = [](const char* word, auto v, auto... expected) {
        const std::array turns{expected...};
        for (int i = 0; i < elements<decltype(v)>; ++i) EXPECT_EQ(v[i], turns[i % turns.size()]) << word << " at place " << i;
    };
    for (int x : edges<int32_t>()) {
        all("splatByte", splatByte(uint8_t(x)), uint8_t(x));
        all("splatWord", splatWord(x), int16_t(x));
        all("splatDword", splatDword(x), x);
        for (int y : edges<int32_t>()) {
            all("splatWords", splatWords(x, y), int16_t(x), int16_t(y));
            all("splatDwords", splatDwords(x, y), x, y);
        }
    }
}

template <class V, class F, class Condition>
void collects(const Word<F>& word, Condition condition) {
    compare<V, 1>(bitsApart(word), [&](int i, const auto& x) { return i < elements<V> && condition(x[i]); });
}

TEST(SimdIntegers, Bits) {
    const auto isNegativeByte = [](int x) { return x > 127; };
    collects<Bytes>(WORD(signBits), isNegativeByte);
    collects<Bytes>(WORD(zeros), [](int x) { return x == 0; });
    const auto isNegative = [](int x) { return x < 0; };
    collects<Dwords>(WORD(signBits), isNegative);
}

TEST(SimdIntegers, Choose) {
    harness::Random random{1};
    const auto chooses = [&](auto v) {
        using V = decltype(v);
        constexpr int count = 8 * sizeof(Bits);
        for (int trial = 0; trial < 100 * count; ++trial) {
            const Bits one = Bits(Bits{1} << trial % count), any = Bits(random.next());
            const Bits bits = trial < count ? one : trial < 2 * count ? Bits(~one) : any;
            V ab[2];
            random.fill({reinterpret_cast<uint8_t*>(ab), sizeof ab}, harness::Content::uniform);
            const V chosen = choose(bits, ab[0], ab[1]);
            for (int i = 0; i < elements<V>; ++i)
                ASSERT_EQ(chosen[i], (bits >> i & 1 ? ab[0] : ab[1])[i]) << "choose by " << bits << " at place " << i;
        }
    };
    each<Bytes>(Word{"choose", [](Bytes a, Bytes b) { return choose((Bytes)(a > b), a, b); }},
                [](int a, int b) { return std::max(a, b); });
    chooses(Bytes{});
    chooses(UWords{});  // of the bits' low half, whatever stands in the high one
}

TEST(SimdIntegers, Unrolled) {
    std::vector<int> numbers;
    unrolled<5>([&](auto i) { numbers.push_back(Constant<2 * i>{} / 2); });
    EXPECT_EQ(numbers, (std::vector{0, 1, 2, 3, 4}));
}

}  // namespace
}  // namespace zel::ZEL_LEVEL
