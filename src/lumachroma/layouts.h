// The layouts of the family: pixels of their own, and chroma sites of one row or of two that are done at once.
#pragma once

#include "frame/layouts.h"

namespace zel::ZEL_LEVEL {

// The order of packed 4:2:2: Y0 C Y1 C', or C Y0 C' Y1.
enum class Packed { lumaFirst, chromaFirst };

// At full resolution.
inline constexpr Layout packed3 = layoutOf({{0, 3}}), packed4 = layoutOf({{0, 4}}), planes3 = layoutOf({{0, 1}, {1, 1}, {2, 1}});

// By sites.
inline constexpr Layout rgb24Pair = layoutOf({{0, 6}}), rgb32Pair = layoutOf({{0, 8}}),
                        rgbPlanesPair = layoutOf({{0, 2}, {1, 2}, {2, 2}});
inline constexpr Layout rgb24Two = inRows(2, rgb24Pair), rgb32Two = inRows(2, rgb32Pair), rgbPlanesTwo = inRows(2, rgbPlanesPair);
inline constexpr Layout rgb24Quad = layoutOf({{0, 12}}), rgb32Quad = layoutOf({{0, 16}});

inline constexpr Layout lumaPair = layoutOf({{0, 2}}), lumaQuad = layoutOf({{0, 4}}), lumaTwo = inRows(2, lumaPair);
// Crossed planes have the chroma of the third plane first.
inline constexpr Layout chroma = layoutOf({{1, 1}, {2, 1}}), chromaCrossed = layoutOf({{2, 1}, {1, 1}}),
                        chromaInterleaved = layoutOf({{1, 2}});
inline constexpr Layout planes420 = joined(lumaTwo, chroma), planes420Crossed = joined(lumaTwo, chromaCrossed),
                        semiPlanar420 = joined(lumaTwo, chromaInterleaved);
inline constexpr Layout planes422 = joined(lumaPair, chroma), planes422Crossed = joined(lumaPair, chromaCrossed),
                        packed422 = layoutOf({{0, 4}});
inline constexpr Layout planes411 = joined(lumaQuad, chroma);

}  // namespace zel::ZEL_LEVEL
