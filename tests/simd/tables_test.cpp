// Words that look results up in tables, and the fields of words.
#include <algorithm>
#include <bit>
#include <cmath>

#include "simd/byte_table.h"
#include "simd/check.h"
#include "simd/fields.h"
#include "simd/float_table.h"
#include "simd/octaves.h"

namespace zel::ZEL_LEVEL {
namespace {

constexpr ByteTable bytesOfTest = [] {
    ByteTable t{};
    for (int i = 0; i < 256; ++i) t.of[i] = uint8_t(i * i * 7 + i / 3 + 11);
    return t;
}();

TEST(SimdTables, Bytes) {
    const auto find = [](uint8_t place) { return bytesOfTest.of[place]; };
    each<Bytes>(Word{"ByteLookup",
                     [](Bytes v) {
                         Bytes samples[1] = {v};
                         ByteLookup<bytesOfTest>().replace(samples);
                         return samples[0];
                     }},
                find);
    each<Bytes>(Word{"ByteLookup of several vectors",
                     [](Bytes v) {
                         Bytes samples[3] = {v + 1, v, v - 1};
                         ByteLookup<bytesOfTest>().replace(samples);
                         return samples[1] ^ samples[0] ^ samples[2];
                     }},
                [&](uint8_t x) { return find(x + 1) ^ find(x) ^ find(x - 1); });
    const MadeByteTable made(bytesOfTest.of);
    each<Bytes>(Word{"MadeByteTable", [&](Bytes v) { return made[v]; }}, find);
}

TEST(SimdTables, Floats) {
    FloatTables tables;
    const auto value = [](int function, int place) { return float(place * 3 + function) / 7; };
    for (int function : {0, 1})
        for (int place = 0; place < floatTablePlaces; ++place) tables.at(function, place) = value(function, place);
    constexpr int lastPlace = floatTablePlaces - 1;
    each<Dwords>(Word{"lookUp", [&](Dwords v) { return lookUp(tables, v & lastPlace).first; }},
                 [=](int x) { return value(0, x & lastPlace); });
    each<Dwords>(Word{"lookUp", [&](Dwords v) { return lookUp(tables, v & lastPlace).second; }},
                 [=](int x) { return value(1, x & lastPlace); });
}

constexpr int lowestExponent = -6;
constexpr OctaveFunction functionOfTest = [] {
    OctaveFunction f{.lowestExponent = lowestExponent, .ofSegments = {}, .ofOctaves = {}};
    for (int i = 0; i < segments; ++i) f.ofSegments[i] = 1 + i / 7.0;
    for (int i = 0; i < octaves; ++i) f.ofOctaves[i] = 3 + i * i / 11.0;
    return f;
}();

// Any bits with one of the sixteen exponents, as both see them.
constexpr uint64_t fractionBits = 52, fraction = (uint64_t{1} << fractionBits) - 1;
template <class Bits>
Bits inOctaves(Bits bits) {
    return (bits & fraction) | ((bits >> fractionBits & (octaves - 1)) + (1023 + lowestExponent)) << fractionBits;
}

TEST(SimdTables, Octaves) {
    const Octaves<functionOfTest> inOctave;
    const auto at = [&](Doubles u) { return inOctave((Doubles)inOctaves((UQwords)u)); };
    const auto number = [](double u) { return std::bit_cast<double>(inOctaves(std::bit_cast<uint64_t>(u))); };
    const auto segmentOf = [](double mantissa) { return int((mantissa - 1) * segments); };
    each<Doubles>(Word{"Octaves, z", [=](Doubles u) { return at(u).z; }}, [=](double u) {
        const double x = number(u), mantissa = std::ldexp(x, -std::ilogb(x));
        return mantissa * (1 / (1 + (2 * segmentOf(mantissa) + 1) / 32.0)) - 1;
    });
    each<Doubles>(Word{"Octaves, scale", [=](Doubles u) { return at(u).scale; }}, [=](double u) {
        const double x = number(u);
        const int exponent = std::ilogb(x);
        return functionOfTest.ofOctaves[exponent - lowestExponent] *
               functionOfTest.ofSegments[segmentOf(std::ldexp(x, -exponent))];
    });
}

// At both ends of memory: words are read and bytes written up to them and no further.
TEST(SimdTables, FieldsOf565) {
    harness::GuardedMemory sources, destinations;
    const auto from = sources.pages(memoryBytes), to = destinations.pages(memoryBytes);
    constexpr int readBytes = 2 * vectorBytes, writtenBytes = 3 * vectorBytes;
    const auto expanded = [](uint8_t* destination, uint8_t* source, UWords first, UWords second) {
        storeVector(source, first);
        storeVector(source + vectorBytes, second);
        expand565(destination, source);
        std::array<uint8_t, writtenBytes> bytes;
        std::memcpy(&bytes, destination, sizeof bytes);
        return bytes;
    };
    const auto field = [](int i, const auto& x) {
        const int word = x[i / 3], fields[] = {word << 3 & 0xf8, word >> 3 & 0xfc, word >> 8 & 0xf8};
        return fields[i % 3];
    };
    compare<UWords, 2>(Word{"expand565", [&](UWords a, UWords b) { return expanded(to.data(), from.data(), a, b); }}, field);
    EXPECT_EQ(std::count(to.begin() + writtenBytes, to.end(), 0), ptrdiff_t(to.size()) - writtenBytes);
    compare<UWords, 2>(
        Word{"expand565 at the end of memory",
             [&](UWords a, UWords b) { return expanded(&*to.end() - writtenBytes, &*from.end() - readBytes, a, b); }},
        field);
}

}  // namespace
}  // namespace zel::ZEL_LEVEL
