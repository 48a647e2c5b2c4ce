// Hue, saturation and value: the highest of the channels is the value, and the hue is counted in sixths of the circle from red,
// which two of the channels share.
#pragma once

#include "colorimetric/float_pixels.h"
#include "colorimetric/hue_pixels.h"

namespace zel::ZEL_LEVEL {

// Bytes. With q = 1 / d and t(x) = (M - x) q, d from the lowest to the highest, both reciprocals as the processor approximates
// them:
//
//     V = M,    S = ((1 / M) d) 255,    H = 42.5 hs (+ 255 if negative)
//     hs = t(B) - t(G)  of red,    (t(R) - t(B)) + 2  of green,    (t(G) - t(R)) + 4  of blue
//
// each rounded to the nearest; gray has H = S = 0.
//
// Where channels share the maximum, blue comes first, and then, in the leading columns red, in the others green. Meant: with
// one order, hues would change: yellow has the hue 42 by the one formula and 43 by the other.
enum class AfterBlue { red, green };

template <AfterBlue afterBlue>
struct ToHsv {
    ZEL_INLINE static Triple of(const Triple& p) {
        const auto& [r, g, b] = p;
        const Extent extent(p);
        const Bytes highest = extent.highest;
        const auto isBlue = b == highest, isSecond = (afterBlue == AfterBlue::red ? r : g) == highest;
        // Of the channel that is highest, the one whose share is taken off, and the one that it is taken off from.
        const Bytes redFrom = b, redOff = g, greenFrom = r, greenOff = b, blueFrom = g, blueOff = r;
        constexpr bool redFirst = afterBlue == AfterBlue::red;
        const auto chosen = [&](Bytes red, Bytes green, Bytes blue) {
            const Bytes other = isSecond ? (redFirst ? red : green) : (redFirst ? green : red);
            return isBlue ? blue : other;
        };
        const Bytes from = highest - chosen(redFrom, greenFrom, blueFrom), off = highest - chosen(redOff, greenOff, blueOff);
        // 0, 2 and 4 as floats are 0x00000000, 0x40000000 and 0x40800000.
        const Bytes sixthHigh = chosen(Bytes{}, splatByte(0x40), splatByte(0x40));
        const Bytes sixthLow = isBlue ? splatByte(0x80) : Bytes{};

        // A divisor of 0 is raised to 1; those pixels are gray.
        const Bytes one = splatByte(1), range = atLeast(extent.range, one), top = atLeast(highest, one);
        Dwords hue[4], saturation[4];
        unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA {
            const Floats d = floatsOf<part>(range), q = Bare::of(d);
            const Floats hs = (floatsOf<part>(from) * q - floatsOf<part>(off) * q) + floatsOf<part>(sixthLow, sixthHigh);
            const Floats hf = hs * splatFloat(42.5f);
            hue[part] = rounded(hf < Floats{} ? hf + splatFloat(255) : hf);
            saturation[part] = rounded((Bare::of(floatsOf<part>(top)) * d) * splatFloat(255));
        });
        const auto isGray = extent.range == Bytes{};
        return {isGray ? Bytes{} : bytesOf(hue), isGray ? Bytes{} : bytesOf(saturation), highest};
    }
};

// The channels by the sixth i of the circle, 0 to 5, of V, p and the one between, which rises or falls:
//
//     V t p    q V p    p V t    p q V    t p V    V p q
template <class Element, class Index>
ZEL_INLINE Channels<Element> bySixth(Index i, Element v, Element p, Element between) {
    const auto isOdd = (i & 1) != 0, isSecondThird = (i & 2) != 0, isThirdThird = (i & 4) != 0;
    const Element first = isOdd ? between : v, second = isOdd ? v : between;
    const auto chosen = [&](Element firstThird, Element secondThird, Element thirdThird) {
        const Element other = isSecondThird ? secondThird : firstThird;
        return isThirdThird ? thirdThird : other;
    };
    return {chosen(first, p, second), chosen(second, first, p), chosen(p, second, first)};
}

// The parts of a colour in floats:
//
//     hf = (H / 60) 360 / full,    i = trunc(hf),    f = hf - i,    a = V S / full,    b = f a
//     p = V - a,    q = V - b in odd sixths,    t = p + b in even ones
//
// Gray, S = 0, is V in all of them. The highest hue counts as 0.
struct SixthOfHue {
    Dwords i;
    Floats p, between;

    ZEL_INLINE SixthOfHue(Floats h, Floats s, Floats v, float degreesOfHue, float part) {
        const Floats hf = (h * splatFloat(0.01666666753590107f)) * splatFloat(degreesOfHue);
        i = truncated(hf);
        const Floats f = hf - toFloats(i), a = v * (s * splatFloat(part)), b = f * a;
        p = v - a;
        between = (i & 1) != 0 ? v - b : p + b;
    }
};

struct FromHsv {
    static constexpr bool prefersRegisters = true;

    ZEL_INLINE static Triple of(const Triple& x) {
        const Bytes h = x.a == splatByte(255) ? Bytes{} : x.a;
        Dwords sixth[4], p[4], between[4];
        unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA {
            const SixthOfHue s(floatsOf<part>(h), floatsOf<part>(x.b), floatsOf<part>(x.c), 1.4117647409439087f,
                               0.003921568859368563f);
            sixth[part] = s.i;
            p[part] = rounded(s.p);
            between[part] = rounded(s.between);
        });
        const auto c = bySixth(bytesOf(sixth), x.c, bytesOf(p), bytesOf(between));
        return {c.a, c.b, c.c};
    }
};

// Words, with true divisions, and results that are cut off:
//
//     V = M,    S = (d / M) 65535 + 0.5,    H = (hs 65535) / 6 + 0.5,  hs + 6 if hs + 2^-23 is negative
//
// and blue before green before red in all columns.
struct ToHsvOfWords {
    ZEL_INLINE static FloatPixel of(const FloatPixel& x) {
        const auto& [r, g, b] = x;
        const Floats highest = atLeast(atLeast(r, g), b), range = highest - atMost(atMost(r, g), b), one = splatFloat(1);
        const auto isBlue = b == highest, isGreen = g == highest;
        const auto chosen = [&](Floats red, Floats green, Floats blue) {
            const Floats other = isGreen ? green : red;
            return isBlue ? blue : other;
        };
        const Floats q = one / atLeast(range, one);
        const Floats from = (highest - chosen(b, r, g)) * q, off = (highest - chosen(g, b, r)) * q;
        Floats hs = (from - off) + chosen(Floats{}, splatFloat(2), splatFloat(4));
        hs = hs + splatFloat(1.1920928955078125e-07f) < Floats{} ? hs + splatFloat(6) : hs;
        const Floats full = splatFloat(65535), half = splatFloat(0.5f), h = (hs * full) / splatFloat(6) + half;
        return {range == Floats{} ? Floats{} : h, (range / atLeast(highest, one)) * full + half, highest};
    }
};

struct FromHsvOfWords {
    ZEL_INLINE static FloatPixel of(const FloatPixel& x) {
        const Floats h = x.a == splatFloat(65535) ? Floats{} : x.a;
        const SixthOfHue s(h, x.b, x.c, 0.005493247881531715f, 1.5259021893143654e-05f);
        const auto c = bySixth(s.i, x.c, s.p, s.between);
        return {c.a, c.b, c.c};
    }
};

}  // namespace zel::ZEL_LEVEL
