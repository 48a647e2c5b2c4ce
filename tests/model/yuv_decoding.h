// Model of the decoders from analog YUV:
//   R = Y + 1.140 (V - 128),  G = Y - 0.394 (U - 128) - 0.581 (V - 128),  B = Y + 2.032 (U - 128)
#pragma once

#include "model/luma_decoding.h"

namespace model {

struct AnalogCoefficients {
    int vToR, vToG, uToG, uToB;
};

// The high halves of products of words: the sample scaled by 128, the coefficients by 512 << Shift.
template <AnalogCoefficients K, int Shift, int Rounding>
constexpr Rgb analogWords(Ycc p) {
    const int luma = p.y << Shift, u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + high(v, K.vToR) + Rounding) >> Shift),
            sat8((luma - high(v, K.vToG) - high(u, K.uToG) + Rounding) >> Shift),
            sat8((luma + high(u, K.uToB) + Rounding) >> Shift)};
}

template <AnalogCoefficients K, int Rounding, int GreenRounding>
constexpr Rgb analogScalar(Ycc p) {
    const int luma = p.y << 16, u = p.cb - 128, v = p.cr - 128;
    return {sat8((luma + K.vToR * v + Rounding) >> 16), sat8((luma - K.uToG * u - K.vToG * v + GreenRounding) >> 16),
            sat8((luma + K.uToB * u + Rounding) >> 16)};
}

inline constexpr AnalogCoefficients at65536{74711, 38076, 25821, 133169}, at65536Lower{74710, 38075, 25820, 133168};

inline constexpr DecodeRule analogUp = analogWords<AnalogCoefficients{9339, 4760, 3228, 16646}, 4, 8>;
inline constexpr DecodeRule analogDown = analogWords<AnalogCoefficients{9338, 4759, 3227, 16645}, 4, 8>;
inline constexpr DecodeRule analogBlueUp = analogWords<AnalogCoefficients{9338, 4759, 3227, 16646}, 4, 8>;
inline constexpr DecodeRule analogTruncated = analogWords<AnalogCoefficients{9338, 4759, 3227, 16646}, 4, 0>;
inline constexpr DecodeRule analogAt4096 = analogWords<AnalogCoefficients{4669, 2380, 1614, 8323}, 3, 4>;

inline constexpr DecodeRule analogTail = analogScalar<at65536, 32768, 0>;
inline constexpr DecodeRule analogTailRounded = analogScalar<at65536, 32768, 32768>;
inline constexpr DecodeRule analogTailTruncated = analogScalar<at65536, 0, 0>;
inline constexpr DecodeRule analogLower = analogScalar<at65536Lower, 32768, 0>;
inline constexpr DecodeRule analogLowerRounded = analogScalar<at65536Lower, 32768, 32768>;

// The fourth channel that nobody gives is 0.
template <Model M>
void withZeroAlpha(const Conversion& c) {
    Conversion zero = c;
    zero.alpha = 0;
    M(zero);
}

}  // namespace model
