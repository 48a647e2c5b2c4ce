// Conversions whose kernels take constants that are made at every call, of what the caller gives behind the size.
#pragma once

#include "frame/driver.h"

namespace zel::ZEL_LEVEL {

// The kernel K, with constants that are made at the call.
template <class K>
inline constexpr Kernel parametric = kernel<K>(nullptr);

template <class Constants>
struct Parametric : Conversion {
    Constants (*constants)(const Images& images);
    bool needsParameters = false;  // null for them is an error
};

template <class Constants>
ZEL_INLINE void convert(const Parametric<Constants>& p, const Images& images, bool bypassing = false) {
    const Constants constants = p.constants(images);
    convert(static_cast<const Conversion&>(p), images, {}, bypassing, &constants);
}

}  // namespace zel::ZEL_LEVEL
