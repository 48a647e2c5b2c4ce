// Hue, lightness and saturation: of the highest channel M and the lowest m, lightness is the mean, and saturation what lies
// between them as a part of the most that the lightness allows. Hue is counted in degrees from red.
#pragma once

#include "colorimetric/float_pixels.h"
#include "colorimetric/hue_pixels.h"

namespace zel::ZEL_LEVEL {

// Integers. With d = M - m, s = M + m, and 1 / x as Reciprocal has it:
//
//     L = s / 2,    S = (d (1 / min(s, 2 full - s))) full,    H = hf full / 360
//     hf = ((G - B) 60) (1 / d)  of red,    ((B - R) 60) (1 / d) + 120  of green,    ((R - G) 60) (1 / d) + 240  of blue
//
// and hf + 360 if hf is negative, all cut off; gray has H = S = 0. Red comes before green and green before blue where they share
// the maximum.

// Bytes. What is exact in floats is done in bytes, where it is exact too. Only the hue of red can be negative, and is where G <
// B.
template <class Reciprocal>
struct ToHls {
    ZEL_INLINE static Triple of(const Triple& p) {
        const auto& [r, g, b] = p;
        const Extent extent(p);
        const Bytes highest = extent.highest, lowest = highest - extent.range;
        const auto isRed = r == highest, isGreen = g == highest;
        const auto chosen = [&](Bytes red, Bytes green, Bytes blue) {
            const Bytes other = isGreen ? green : blue;
            return isRed ? red : other;
        };
        const Bytes from = chosen(g, b, r), off = chosen(b, r, g);
        const auto isBelow = atMost(from, off) != off;
        // All degrees are 2^16 of them, since words widen to that without a shift. 120, 240 and 360 as floats are then
        // 0x4af00000, 0x4b700000 and 0x4bb40000.
        const Bytes degreesHigh = chosen(isBelow ? splatByte(0x4b) : Bytes{}, splatByte(0x4a), splatByte(0x4b));
        const Bytes degreesLow = chosen(isBelow ? splatByte(0xb4) : Bytes{}, splatByte(0xf0), splatByte(0x70));
        const auto times60 = (Bytes)splatWord(uint8_t(60) | uint8_t(-60) << 8);
        const Words n[2] = {mulAddBytes(interleaveLow(from, off), times60), mulAddBytes(interleaveHigh(from, off), times60)};

        // A divisor of 0 is raised to 1; those pixels are gray. Sums stop at 255, so the lesser one does not.
        const Bytes one = splatByte(1), range = atLeast(extent.range, one);
        const Bytes room = atLeast(atMost(addSaturated(highest, lowest), addSaturated(~highest, ~lowest)), one);
        Dwords hue[4], saturation[4];
        unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA {
            const Words half = n[part / 2];
            const auto numerator = (Dwords)(part % 2 == 0 ? interleaveLow(Words{}, half) : interleaveHigh(Words{}, half));
            const Floats d = floatsOf<part>(range), degrees = floatsOf<part>(degreesLow, degreesHigh);
            const Floats hf = toFloats(numerator) * Reciprocal::of(d) + degrees;
            hue[part] = truncated(hf * splatFloat(0.7083333134651184f / 65536));
            saturation[part] = truncated((d * Reciprocal::of(floatsOf<part>(room))) * splatFloat(255));
        });
        const Bytes lightness = mean(highest, lowest) - ((highest ^ lowest) & one);
        return {bytesOf(hue), lightness, extent.range == Bytes{} ? Bytes{} : bytesOf(saturation)};
    }
};

// The differences from red to blue, of which one belongs to the maximum, and the degrees of that one.
struct HueOfMaximum {
    Floats difference, degrees;
    Dwords isRed;

    ZEL_INLINE HueOfMaximum(const FloatPixel& x, Floats highest) : isRed(x.a == highest) {
        const auto isGreen = x.b == highest;
        difference = isRed ? x.b - x.c : isGreen ? x.c - x.a : x.a - x.b;
        degrees = isRed ? Floats{} : isGreen ? splatFloat(120) : splatFloat(240);
    }
};

ZEL_INLINE Floats highestOf(const FloatPixel& x) { return atLeast(atLeast(x.a, x.b), x.c); }
ZEL_INLINE Floats lowestOf(const FloatPixel& x) { return atMost(atMost(x.a, x.b), x.c); }
ZEL_INLINE Floats aroundCircle(Floats degrees) { return degrees < Floats{} ? byMode(degrees + splatFloat(360)) : degrees; }

struct ToHlsOfWords {
    ZEL_INLINE static FloatPixel of(const FloatPixel& x) {
        const Floats highest = highestOf(x), lowest = lowestOf(x), d = highest - lowest, s = highest + lowest;
        const HueOfMaximum hue(x, highest);
        const Floats one = splatFloat(1), room = atMost(s, splatFloat(131070) - s);
        const Floats hf = (hue.difference * splatFloat(60)) * Refined::of(atLeast(d, one)) + hue.degrees;
        return {aroundCircle(hf) * splatFloat(182.0416717529297f), splatFloat(0.5f) * s,
                (d * Refined::of(atLeast(room, one))) * splatFloat(65535)};
    }
};

// Floats, with true divisions: L = s / 2, S = d / s or d / (2 - s) above L = 0.5, H = hf / 360. Nothing is limited.
struct ToHlsOfFloats {
    static constexpr bool prefersRegisters = true;

    ZEL_INLINE static FloatPixel of(const FloatPixel& x) {
        const Floats highest = highestOf(x), lowest = lowestOf(x), d = highest - lowest, s = highest + lowest;
        const HueOfMaximum hue(x, highest);
        const Floats l = splatFloat(0.5f) * s, quotient = (hue.difference * splatFloat(60)) / d;
        const Floats hf = hue.isRed ? quotient : byMode(quotient + hue.degrees);
        const auto isGray = d <= splatFloat(1.1920928955078125e-07f);
        const Floats h = aroundCircle(hf) / splatFloat(360), saturation = d / (l <= splatFloat(0.5f) ? s : splatFloat(2) - s);
        return {isGray ? Floats{} : h, l, isGray ? Floats{} : saturation};
    }
};

// The way back, with L and S from 0 to 1 and the hue in degrees:
//
//     M1 = L + L S, or (L + S) - L S above L = 0.5,    M2 = 2 L - M1,    D = M1 - M2
//     F(h) = (h / 60) D + M2 below 60,    M1 below 180,    ((240 - h) / 60) D + M2 below 240,    M2 from there on
//     R = F(H + 120, - 360 if above 360),    G = F(H),    B = F(H - 120, + 360 if below 0)
//
// The leading columns multiply by what 1 / 60 is in floats, the last ones of some depths have M1 = (1 + S) L and (D h) / 60.
// Meant: by one formula the last digits at the ends of rows would change.
struct Multiplying {
    ZEL_INLINE static Floats dark(Floats l, Floats s) { return l + l * s; }
    ZEL_INLINE static Floats ramp(Floats h, Floats d, Floats m2) { return (h * splatFloat(0.01666666753590107f)) * d + m2; }
};
struct Dividing {
    ZEL_INLINE static Floats dark(Floats l, Floats s) { return (splatFloat(1) + s) * l; }
    ZEL_INLINE static Floats ramp(Floats h, Floats d, Floats m2) { return (d * h) / splatFloat(60) + m2; }
};

template <class Form>
struct LightnessRange {
    Floats m1, m2, d;

    ZEL_INLINE LightnessRange(Floats l, Floats s)
        : m1(l > splatFloat(0.5f) ? (l + s) - l * s : Form::dark(l, s)), m2(splatFloat(2) * l - m1), d(m1 - m2) {}
};

// A hue from 0 to 360. Both ramps are one of the distance from its foot, the lesser of h and 240 - h, and from the second foot on
// the distance is 0. No hue of integers is 60 or 180 degrees, where the ramp and M1 could round to different sides.
template <class Form>
ZEL_INLINE FloatPixel fromHlsWithinCircle(Floats h, Floats l, Floats s) {
    const LightnessRange<Form> range(l, s);
    const Floats third = splatFloat(120), secondFoot = splatFloat(240), circle = splatFloat(360);
    const auto at = [&](Floats distance) {
        const Floats ramp = Form::ramp(atLeast(distance, Floats{}), range.d, range.m2);
        return distance < splatFloat(60) ? ramp : range.m1;
    };
    const Floats red = h + third, blue = h - third;
    return {at(atLeast(secondFoot - red, red - circle)), at(atMost(h, secondFoot - h)), at(atMost(blue, secondFoot - blue))};
}

// Any hue.
template <class Form>
struct FromHlsOfFloats {
    static constexpr bool prefersRegisters = true;

    ZEL_INLINE static FloatPixel of(const FloatPixel& x) {
        const Floats h = x.a * splatFloat(360), l = x.b, s = x.c;
        const LightnessRange<Form> range(l, s);
        const Floats third = splatFloat(120), secondFoot = splatFloat(240), circle = splatFloat(360);
        const auto isGray = s == Floats{};
        const auto at = [&](Floats hue) {
            const Floats ramp = Form::ramp(atMost(hue, secondFoot - hue), range.d, range.m2);
            const Floats beforeFoot = hue < secondFoot ? byMode(ramp) : range.m2;
            const auto isBetween = (hue >= splatFloat(60)) & (hue < splatFloat(180));
            const Floats result = isBetween ? range.m1 : beforeFoot;
            return isGray ? l : result;
        };
        const Floats red = h + third, blue = h - third;
        return {at(red > circle ? byMode(red - circle) : red), at(h), at(blue < Floats{} ? byMode(blue + circle) : blue)};
    }
};

// Bytes, cut off. Gray pixels come out as their lightness.
struct FromHls {
    static constexpr bool prefersRegisters = true;

    ZEL_INLINE static Triple of(const Triple& x) {
        Dwords r[4], g[4], b[4];
        unrolled<4>([&](auto part) ZEL_INLINE_LAMBDA {
            const Floats unit = splatFloat(0.003921568859368563f), full = splatFloat(255);
            const FloatPixel p = fromHlsWithinCircle<Multiplying>(floatsOf<part>(x.a) * splatFloat(1.4117647409439087f),
                                                                  floatsOf<part>(x.b) * unit, floatsOf<part>(x.c) * unit);
            r[part] = truncated(p.a * full);
            g[part] = truncated(p.b * full);
            b[part] = truncated(p.c * full);
        });
        return {bytesOf(r), bytesOf(g), bytesOf(b)};
    }
};

// Words.
template <class Form>
ZEL_INLINE FloatPixel fromHlsOfWords(const FloatPixel& x) {
    const Floats full = splatFloat(65535), degrees = splatFloat(0.005493247881531715f),
                 unit = splatFloat(1.5259021893143654e-05f);
    if constexpr (std::is_same_v<Form, Dividing>)
        return fromHlsWithinCircle<Form>((x.a * splatFloat(360)) / full, x.b / full, x.c / full);
    else
        return fromHlsWithinCircle<Form>(x.a * degrees, x.b * unit, x.c * unit);
}

// Unsigned ones have 15 bits of result, doubled: white is 65534. Gray of the last columns stays what it was. Meant: at
// the full scale of words, both would change.
template <bool keepsGray>
struct FromHlsOfUnsigned {
    ZEL_INLINE static FloatPixel of(const FloatPixel& x) {
        const FloatPixel p = fromHlsOfWords<Multiplying>(x);
        [[maybe_unused]] const auto isGray = x.c == Floats{};
        const auto even = [&](Floats v) {
            const Floats doubled = toFloats(truncated(v * splatFloat(32767.5f)) << 1);
            if constexpr (keepsGray) return isGray ? x.b : doubled;
            return doubled;
        };
        return {even(p.a), even(p.b), even(p.c)};
    }
};

// Signed ones are rounded to the nearest in the leading columns, in the others by a term that is a little less than a half.
template <class Form>
struct FromHlsOfSigned {
    ZEL_INLINE static FloatPixel of(const FloatPixel& x) {
        const FloatPixel p = fromHlsOfWords<Form>(x);
        const auto scaled = [](Floats v) {
            const Floats whole = v * splatFloat(65535);
            return std::is_same_v<Form, Dividing> ? whole + splatFloat(0.49998998641967773f) : whole;
        };
        return {scaled(p.a), scaled(p.b), scaled(p.c)};
    }
};

}  // namespace zel::ZEL_LEVEL
