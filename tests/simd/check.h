// How the words of the vector layer are held against plain numbers: element by element, byte by byte where they only move bytes,
// and in memory between inaccessible pages, of which nothing may be touched but what the word promises.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <span>
#include <sstream>
#include <string>
#include <tuple>

#include "harness/guarded_memory.h"
#include "simd/inputs.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

template <class F>
struct Word {
    Word(const char* itsName, F function) : name(itsName), apply(function) {}

    const char* name;
    F apply;
};
// A word by its name, for all of its types.
#define WORD(...) Word(#__VA_ARGS__, [](auto... operands) { return __VA_ARGS__(operands...); })

template <class V>
using Element = std::remove_cvref_t<decltype(std::declval<V&>()[0])>;
template <class V>
constexpr int elements = int(sizeof(V) / sizeof(Element<V>));

template <class T, class Object>
std::array<T, sizeof(Object) / sizeof(T)> arrayOf(const Object& object) {
    std::array<T, sizeof(Object) / sizeof(T)> array;
    std::memcpy(&array, &object, sizeof object);
    return array;
}

// Every NaN is as good as another.
template <class E>
bool isSame(E a, E b) {
    if constexpr (std::is_floating_point_v<E>)
        if (a != a) return b != b;
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// The operands of one place where the result has as many, otherwise all that there were.
template <int n, int operands, class E>
std::string given(const std::array<E, n * operands>& x, int results, int place) {
    std::ostringstream text;
    text.precision(std::numeric_limits<E>::max_digits10);
    for (int i = 0; i < n * operands; ++i)
        if (results != n || i % n == place) text << ' ' << +x[i];
    return text.str();
}

// Element i of the result is expected(i, x), where x has the elements of all operands, those of the first operand first.
template <class V, int operands, class F, class Expected>
void compare(const Word<F>& word, Expected expected) {
    using E = Element<V>;
    constexpr int n = elements<V>;
    const auto& all = inputs<E, operands>();
    for (size_t at = 0; at + n <= all.size(); at += n) {
        std::array<E, n * operands> x;
        for (int i = 0; i < n * operands; ++i) x[i] = all[at + i % n][i / n];
        std::array<V, operands> vectors;
        std::memcpy(&vectors, &x, sizeof vectors);
        const auto result = std::apply(word.apply, vectors);
        using R = Element<decltype(result)>;
        constexpr int results = elements<decltype(result)>;
        for (int i = 0; i < results; ++i) {
            const R got = result[i], wanted = R(expected(i, x));
            if (isSame(got, wanted)) continue;
            ADD_FAILURE() << word.name << " gives " << +got << " at place " << i << ", not " << +wanted << ", of"
                          << given<n, operands>(x, results, i);
            return;
        }
    }
}

// Every element by itself, of one to three operands.
template <class V, class F, class Expected>
void each(const Word<F>& word, Expected expected) {
    using E = Element<V>;
    constexpr int n = elements<V>;
    if constexpr (std::is_invocable_v<Expected, E, E, E>)
        compare<V, 3>(word, [&](int i, const auto& x) { return expected(x[i], x[n + i], x[2 * n + i]); });
    else if constexpr (std::is_invocable_v<Expected, E, E>)
        compare<V, 2>(word, [&](int i, const auto& x) { return expected(x[i], x[n + i]); });
    else
        compare<V, 1>(word, [&](int i, const auto& x) { return expected(x[i]); });
}

// A bit for every element, the first one's lowest, as an element by itself; beyond them there are none.
template <class F>
auto bitsApart(const Word<F>& word) {
    struct Bit {
        uint8_t of[64];
        const uint8_t& operator[](int i) const { return of[i]; }
    };
    const auto apart = [=](auto... operands) {
        const uint64_t bits = word.apply(operands...);
        Bit bit{};
        for (int i = 0; i < 64; ++i) bit.of[i] = bits >> i & 1;
        return bit;
    };
    return Word(word.name, apart);
}

// Words that move bytes or groups of them: group i of the result is the group `place(i)` of what was given, or one of these.
constexpr int none = -1;  // 0
constexpr int kept = -2;  // what memory held

template <int unit, class Place>
int byteFrom(Place place, int i) {
    const int group = place(i / unit);
    return group < 0 ? group : group * unit + i % unit;
}

// The numbers from 1 on, by which a place is known, and then any bytes.
inline void fill(std::span<uint8_t> bytes, int trial) {
    harness::Random random(uint64_t(trial) + 1);
    random.fill(bytes, harness::Content::uniform);
    for (size_t i = 0; trial == 0 && i < bytes.size(); ++i) bytes[i] = uint8_t(i + 1);
}
constexpr int trials = 40;

inline bool isExpected(const char* name, const std::string& where, int i, int got, int expected) {
    if (got == expected) return true;
    ADD_FAILURE() << name << where << " has " << got << ", not " << expected << ", in byte " << i;
    return false;
}

// Operands that have these bytes, one after the other.
template <class... Given>
constexpr size_t bytesOf = (sizeof(Given) + ...);
template <class... Given>
std::tuple<Given...> operandsOf(const std::array<uint8_t, bytesOf<Given...>>& bytes) {
    std::tuple<Given...> given;
    size_t at = 0;
    std::apply([&](auto&... v) { ((std::memcpy(&v, bytes.data() + at, sizeof v), at += sizeof v), ...); }, given);
    return given;
}

template <int unit, class... Given, class F, class Place>
void moves(const Word<F>& word, Place place) {
    for (int trial = 0; trial < trials; ++trial) {
        std::array<uint8_t, bytesOf<Given...>> bytes;
        fill(bytes, trial);
        const auto given = operandsOf<Given...>(bytes);
        const auto result = arrayOf<uint8_t>(std::apply(word.apply, given));
        for (int i = 0; i < int(result.size()); ++i) {
            const int from = byteFrom<unit>(place, i);
            if (!isExpected(word.name, "", i, result[i], from < 0 ? 0 : bytes[from])) return;
        }
    }
}

// Where a stretch of so many bytes can lie: at the first byte of the memory, up to its last one, and anywhere in a line.
inline std::vector<uint8_t*> placesFor(size_t bytes, std::span<uint8_t> memory) {
    std::vector<uint8_t*> places{memory.data() + memory.size() - bytes};
    for (size_t i = 0; i < 2 * lineBytes; ++i) places.push_back(memory.data() + i);
    return places;
}
constexpr size_t memoryBytes = 4096;

// Reads `bytes` from memory, none before or behind them.
template <int unit, class F, class Place>
void loads(const Word<F>& word, size_t bytes, Place place) {
    harness::GuardedMemory guarded;
    const auto memory = guarded.pages(memoryBytes);
    for (int trial = 0; trial < 2; ++trial)
        for (uint8_t* p : placesFor(bytes, memory)) {
            fill({p, bytes}, trial);
            const auto result = arrayOf<uint8_t>(word.apply(static_cast<const uint8_t*>(p)));
            for (int i = 0; i < int(result.size()); ++i) {
                const int from = byteFrom<unit>(place, i);
                if (!isExpected(word.name, "", i, result[i], from < 0 ? 0 : p[from])) return;
            }
        }
}

// Writes to `bytes` of memory and nowhere else: `place` tells for each of them where it comes from. By the caches and around
// them.
template <int unit, class... Given, class F, class Place>
void stores(const Word<F>& word, size_t bytes, Place place) {
    harness::GuardedMemory guarded;
    const auto memory = guarded.pages(memoryBytes);
    std::vector<uint8_t> before(memory.size());
    for (int trial = 0; trial < 4; ++trial)
        for (uint8_t* p : placesFor(bytes, memory)) {
            std::array<uint8_t, bytesOf<Given...>> from;
            fill(from, trial / 2);
            const auto given = operandsOf<Given...>(from);
            harness::Random(uint64_t(trial) + 100).fill(before, harness::Content::uniform);
            std::memcpy(memory.data(), before.data(), before.size());
            const bool bypassing = trial % 2;
            std::apply([&](auto... v) { word.apply(Destination(p, bypassing), v...); }, given);
            for (int i = 0; i < int(memory.size()); ++i) {
                const int ofWord = i - int(p - memory.data());
                const int source = ofWord < 0 || ofWord >= int(bytes) ? kept : byteFrom<unit>(place, ofWord);
                const int expected = source == kept ? before[i] : source == none ? 0 : from[source];
                if (!isExpected(word.name, bypassing ? ", bypassing the caches," : "", ofWord, memory[i], expected)) return;
            }
        }
}

}  // namespace zel::ZEL_LEVEL
