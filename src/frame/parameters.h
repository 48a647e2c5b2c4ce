// Conversions whose kernels take constants that are made at every call, of what the caller gives behind the size.
#pragma once

#include "frame/driver.h"

namespace zel::ZEL_LEVEL {

// The kernel K, with constants that are made at the call.
template <class K>
inline constexpr Kernel parametric = kernel<K>(nullptr);

template <class Constants, class Extras_>
struct Parametric : Conversion {
    using Extras = Extras_;

    Constants (*constants)(const Extras& extras);
};

template <class Constants, class Extras>
ZEL_INLINE void convert(const Parametric<Constants, Extras>& p, const Images& images, const Extras& extras) {
    const Constants constants = p.constants(extras);
    convert(static_cast<const Conversion&>(p), images, Call{.constants = &constants});
}

}  // namespace zel::ZEL_LEVEL
