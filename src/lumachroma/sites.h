// Layouts by chroma site: one site of a row, or of two rows that are done at once.
#pragma once

#include "frame/layouts.h"

namespace zel::ZEL_LEVEL {

// The order of packed 4:2:2: Y0 C Y1 C', or C Y0 C' Y1.
enum class Packed { lumaFirst, chromaFirst };

inline constexpr Layout rgb24Two{2, {{0, 6, 0, 2}, {0, 6, 1, 2}}}, rgb32Two{2, {{0, 8, 0, 2}, {0, 8, 1, 2}}},
    rgbPlanesTwo{6, {{0, 2, 0, 2}, {1, 2, 0, 2}, {2, 2, 0, 2}, {0, 2, 1, 2}, {1, 2, 1, 2}, {2, 2, 1, 2}}};
inline constexpr Layout rgb24Pair{1, {{0, 6}}}, rgb32Pair{1, {{0, 8}}}, rgbPlanesPair{3, {{0, 2}, {1, 2}, {2, 2}}};
inline constexpr Layout rgb24Quad{1, {{0, 12}}}, rgb32Quad{1, {{0, 16}}};

// Crossed planes have the chroma of the third plane first.
inline constexpr Layout planes420{4, {{0, 2, 0, 2}, {0, 2, 1, 2}, {1, 1}, {2, 1}}},
    planes420Crossed{4, {{0, 2, 0, 2}, {0, 2, 1, 2}, {2, 1}, {1, 1}}}, semiPlanar420{3, {{0, 2, 0, 2}, {0, 2, 1, 2}, {1, 2}}};
inline constexpr Layout planes422{3, {{0, 2}, {1, 1}, {2, 1}}}, planes422Crossed{3, {{0, 2}, {2, 1}, {1, 1}}},
    packed422{1, {{0, 4}}};
inline constexpr Layout planes411{3, {{0, 4}, {1, 1}, {2, 1}}};

}  // namespace zel::ZEL_LEVEL
