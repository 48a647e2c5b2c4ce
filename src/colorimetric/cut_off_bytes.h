// Rules that compute bytes in single precision and cut the results off.
#pragma once

#include "colorimetric/shared_rules.h"

namespace zel::ZEL_LEVEL {

struct DwordPixel {
    Dwords a, b, c;
};

// Rule::bytes gives the results of a pixel as dwords, which saturate.
template <class Rule>
struct BytesRule {
    ZEL_INLINE static Triple of(const Triple& t) {
        Dwords a[4], b[4], c[4];
        unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA {
            const DwordPixel p =
                Rule::bytes({Depth8u::toFloats<part>(t.a), Depth8u::toFloats<part>(t.b), Depth8u::toFloats<part>(t.c)});
            a[part] = p.a;
            b[part] = p.b;
            c[part] = p.c;
        });
        const auto packed = [](const Dwords(&x)[4]) { return packBytes(packWords(x[0], x[1]), packWords(x[2], x[3])); };
        return {packed(a), packed(b), packed(c)};
    }
};

ZEL_INLINE DwordPixel cutOff(const FloatPixel& p) { return {truncated(p.a), truncated(p.b), truncated(p.c)}; }

template <class Rule>
struct CutOffBytes {
    ZEL_INLINE static DwordPixel bytes(const FloatPixel& p) { return cutOff(Rule::of(p)); }
};

// A rule that is expensive to compute exactly. Rule::above gives results above 0 that lie above the exact ones by less than twice
// Rule::margin; where an integer isn't that near below them, they are right when they are cut off. The other pixels are left to
// Rule::exactly.
template <class Rule>
struct NearlyThenExactly {
    ZEL_INLINE static DwordPixel bytes(const FloatPixel& p) {
        const FloatPixel upper = Rule::above(p);
        const DwordPixel whole = cutOff(upper);
        const Floats least =
            atMost(upper.a - toFloats(whole.a), atMost(upper.b - toFloats(whole.b), upper.c - toFloats(whole.c)));
        const unsigned which = signBits((Dwords)(least < splatFloat(2 * Rule::margin)));
        if (__builtin_expect(which != 0, 0)) return exactly(p, whole, which);
        return whole;
    }

  private:
    ZEL_NOINLINE static DwordPixel exactly(FloatPixel p, DwordPixel whole, unsigned which) {
        const DwordPixel exact = cutOff(Rule::exactly(p, which));
        for (; which != 0; which &= which - 1) {
            const int i = __builtin_ctz(which);
            whole.a[i] = exact.a[i];
            whole.b[i] = exact.b[i];
            whole.c[i] = exact.c[i];
        }
        return whole;
    }
};

}  // namespace zel::ZEL_LEVEL
