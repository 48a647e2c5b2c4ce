// Kernels: what of a conversion each level has of its own.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "frame/conversion.h"
#include "simd/vector.h"

namespace zel::ZEL_LEVEL {

// Rules of a few operations a sample keep up with memory where a vector is as long as a line. With shorter ones it is a matter of
// a few operations more or less, and stores that bypass the caches lose up to a quarter where they are too many.
constexpr bool fewOperationsKeepUp = traits.bypassesByWholeLines;

// The base of kernels with such rules.
struct FewOperations {
    static constexpr bool keepsUp = fewOperationsKeepUp;
};

struct NoConstants {};
template <class K>
struct ConstantsOf {
    using Type = NoConstants;
};
template <class K>
requires requires { typename K::Constants; }
struct ConstantsOf<K> {
    using Type = typename K::Constants;
};

// A kernel of constants, where it has any.
template <class K>
ZEL_INLINE K made(const typename ConstantsOf<K>::Type& k) {
    if constexpr (requires { typename K::Constants; })
        return K(k);
    else
        return K();
}

// Kernels and destinations that look at a row's place say so by a member of this name.
template <class K>
constexpr bool looksAtPlace = requires {
    requires K::seesPlace;
};

// Calls convert(row). Moves are so short that a question at each store, whether it bypasses the caches, costs half of their
// speed: they have code of its own for rows whose stores don't.
template <bool isMove, class Convert>
ZEL_INLINE void askOnce(const Row& first, const Convert& convert) {
    if (isMove && first.out.bypassing == 0) {
        Row row = first;
        row.out.bypassing = 0;
        convert(row);
    } else {
        convert(first);
    }
}

// The row is a copy that no store can reach, so its pointers stay in registers.
template <class K>
ZEL_INLINE void convertBlocks(const typename ConstantsOf<K>::Type& k, Row row, const Steps& steps, size_t groups, size_t count) {
    // Written out, or the pointers go through memory.
    const auto next = [&]() ZEL_INLINE_LAMBDA {
#pragma GCC unroll 8
        for (int i = 0; i < maxSources; ++i) row.in[i] = moved(row.in[i], steps.in[i]);
#pragma GCC unroll 8
        for (int i = 0; i < maxDestinations; ++i) row.out[i] = moved(row.out[i], steps.out[i]);
        ++row.place.group;
    };
    if constexpr (requires { K::blocks(k, row, count); }) {
        for (; groups != 0; --groups, next()) K::blocks(k, row, count);
    } else {
        const K convertBlock = made<K>(k);
        for (; groups != 0; --groups, next())
            for (size_t i = 0; i < count; ++i) convertBlock(row, i);
    }
}

// The kernel K, a type made from its `Constants`, if it has any, that converts one block of a row by its call operator, or some
// blocks by `blocks`. The constants must outlive the calls.
template <class K>
constexpr Kernel kernel(const typename ConstantsOf<K>::Type* constants) {
    static_assert(std::has_single_bit(unsigned{K::sites}));
    constexpr auto blocks = [](const void* c, const Row& first, const Steps& steps, size_t groups, size_t count) {
        const auto& k = *static_cast<const typename ConstantsOf<K>::Type*>(c);
        constexpr bool isMove = requires { K::blocksAtOnce; };
        askOnce<isMove>(first, [&](const Row& row) ZEL_INLINE_LAMBDA { convertBlocks<K>(k, row, steps, groups, count); });
    };
    Kernel result{blocks, constants, K::sites, looksAtPlace<K>};
    if constexpr (requires { K::blocksAtOnce; }) result.blocksAtOnce = K::blocksAtOnce;
    if constexpr (requires { K::keepsUp; }) result.keepsUp = K::keepsUp;
    return result;
}
template <class K>
constexpr Kernel kernel(const typename ConstantsOf<K>::Type& constants) {
    return kernel<K>(&constants);
}

inline constexpr NoConstants noConstants{};
template <class K>
inline constexpr Kernel withoutConstants = kernel<K>(noConstants);

// Columns of a block rule.
template <int pixels>
constexpr int wholeBlocks(int width) {
    return width & -pixels;
}

}  // namespace zel::ZEL_LEVEL
