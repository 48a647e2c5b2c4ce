// From pixels with chroma of their own to RGB.
#pragma once

#include "frame/layouts.h"
#include "lumachroma/rules/decoding.h"

namespace zel::ZEL_LEVEL {

// Y, p, q of a pixel to a, b, c.
template <class Rule>
struct Decode {
    using Constants = typename Rule::Constants;
    static constexpr Order order = Rule::order;

    Rule rule;

    ZEL_INLINE explicit Decode(const Constants& k) : rule(k) {}
    ZEL_INLINE Triple operator()(Triple t) const { return rule.pixels(t.a, t.b, t.c); }
};

// Interleaved YCbCr to RGB takes p from the third byte and q from the second.
template <class Rule>
struct DecodeCrossed : Decode<Rule> {
    using Decode<Rule>::Decode;
    ZEL_INLINE Triple operator()(Triple t) const { return this->rule.pixels(t.a, t.c, t.b); }
};

}  // namespace zel::ZEL_LEVEL
