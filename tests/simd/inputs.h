// Numbers to try words with: all there are where these are few, otherwise the edges of the type and numbers of a fixed seed.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>
#include <vector>

#include "harness/random.h"
#include "simd/level.h"

namespace zel::ZEL_LEVEL {

template <class E>
using BitsOf =
    std::conditional_t<sizeof(E) == 8, uint64_t,
                       std::conditional_t<sizeof(E) == 4, uint32_t, std::conditional_t<sizeof(E) == 2, uint16_t, uint8_t>>>;

// An even number of edges would leave some of them to the same places of all vectors.
template <class E>
std::vector<E> edges() {
    using Limits = std::numeric_limits<E>;
    std::vector<E> edges;
    const auto addBoth = [&](auto x) { edges.insert(edges.end(), {E(x), E(-x)}); };
    if constexpr (std::is_floating_point_v<E>) {
        // Ties and bounds of samples and of dwords.
        for (double x : {0.0, 0.5, 1.0, 1.5, 2.5, 126.5, 127.5, 128.5, 254.5, 255.0, 255.5, 32767.5, 32768.5, 65534.5, 65535.5})
            addBoth(x);
        for (double x : {0x1p22 + 0.5, 0x1p23 + 1, 0x1p31 - 128, 0x1p31 - 0.5, 0x1p31, 0x1p31 + 0.5, 0x1p31 + 1, 0x1p32})
            addBoth(x);
        for (E x : {Limits::denorm_min(), Limits::min(), Limits::epsilon(), Limits::max(), Limits::infinity()}) addBoth(x);
        edges.push_back(Limits::quiet_NaN());
    } else {
        for (int64_t x : {0, 1, 2, 3, 15, 16, 17, 100, 126, 127, 128, 129, 253, 254, 255, 256, 257}) addBoth(x);
        for (int64_t x : {0x3fff, 0x4000, 0x4001, 0x5555, 0x7ffe, 0x7fff, 0x8000, 0x8001, 0xfffe, 0xffff, 0x10000}) addBoth(x);
        for (int64_t x : {0x10001, 0x12345678, 0x7ffffffe, 0x7fffffff}) addBoth(x);
        edges.push_back(Limits::min());
    }
    return edges;
}

// Any bits; of floats half are of a size that integers have.
template <class E>
E anyOf(harness::Random& random) {
    const uint64_t word = random.next();
    if constexpr (std::is_floating_point_v<E>)
        if (word & 1) return E(int32_t(word >> 32)) / E(uint64_t{1} << (word >> 1) % 32);
    return std::bit_cast<E>(BitsOf<E>(word >> 8));
}

// The operands of a word at one place.
template <class E, int operands>
std::vector<std::array<E, operands>> makeInputs() {
    constexpr int perKind = 1 << 15;
    harness::Random random{18};
    const std::vector<E> some = edges<E>();
    const auto anyEdge = [&] { return some[random.next() % some.size()]; };
    const auto anyExtreme = [&] { return random.next() % 2 ? std::numeric_limits<E>::lowest() : std::numeric_limits<E>::max(); };
    std::vector<std::array<E, operands>> all;
    const auto add = [&](auto... x) { all.push_back({x...}); };
    const int few = sizeof(E) == 1 ? 1 << 8 : sizeof(E) == 2 ? 1 << 16 : 0;
    if constexpr (operands == 1) {
        for (int i = 0; i < few; ++i) add(E(i));
        for (E x : some) add(x);
        for (int i = 0; i < perKind; ++i) add(anyOf<E>(random));
    } else {
        for (int i = 0; i < few; ++i) {
            if constexpr (sizeof(E) == 1)
                for (int k = 0; k < few; ++k) add(E(i), E(k));
            else
                for (E x : some) add(E(i), x), add(x, E(i));
        }
        for (E x : some)
            for (E y : some) add(x, y);
        for (int i = 0; i < perKind; ++i) {
            std::array<E, operands> x;
            for (E& e : x) e = anyOf<E>(random);
            all.push_back(x);
        }
    }
    // What words make of neighbours: edges in any company, and the extremes together.
    for (int i = 0; i < perKind; ++i) {
        std::array<E, operands> x;
        for (E& e : x) e = i % 2 ? anyEdge() : anyExtreme();
        all.push_back(x);
    }
    return all;
}
template <class E, int operands>
const auto& inputs() {
    static const auto all = makeInputs<E, operands>();
    return all;
}

}  // namespace zel::ZEL_LEVEL
