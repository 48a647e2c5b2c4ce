// The level that a kernel source is compiled for. The build sets ZEL_LEVEL, the name of the namespace around all code that
// depends on the level; nothing outside that namespace may be an inline function or a template that kernels use, or the
// linker could keep the copy of a higher level for a lower one.
#pragma once

#ifndef ZEL_LEVEL
#error "kernel sources are compiled with ZEL_LEVEL, see CMakeLists.txt"
#endif

// Lanes of 16 bytes in a vector register.
#if defined(__AVX512VBMI__)
#define ZEL_LANES 4
#elif defined(__AVX2__)
#define ZEL_LANES 2
#else
#define ZEL_LANES 1
#endif

#define ZEL_INLINE [[gnu::always_inline]] inline
#define ZEL_OWN_CODE [[gnu::noinline]]
#define ZEL_INLINE_LAMBDA __attribute__((always_inline))
