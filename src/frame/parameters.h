// Conversions whose kernels take constants that are made at every call, of what the caller gives behind the size.
#pragma once

#include "frame/driver.h"

namespace zel::ZEL_LEVEL {

// The kernel K, with constants that are made at the call.
template <class K>
inline constexpr Kernel parametric = kernel<K>(nullptr);

template <class Constants, class Given_>
struct Parametric : Conversion {
    using Given = Given_;

    Constants (*constants)(const Given& given);
};

template <class Constants, class Given>
ZEL_INLINE void convert(const Parametric<Constants, Given>& p, const Images& images, const Given& given) {
    const Constants constants = p.constants(given);
    convert(static_cast<const Conversion&>(p), images, {}, {}, Stores::bySize, &constants);
}

}  // namespace zel::ZEL_LEVEL
