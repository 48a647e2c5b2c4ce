// The thread's control of floating-point arithmetic as the processor holds it.
#pragma once

#include <cstdint>

#if !defined(__aarch64__)
#include <pmmintrin.h>
#endif

namespace harness::control {

#if defined(__aarch64__)

constexpr uint64_t roundingField = 3 << 22, flushesToZero = 1 << 24;
constexpr uint64_t flags = 0;  // they have a register of their own
constexpr uint64_t cases[] = {0, flushesToZero};

inline uint64_t word() {
    uint64_t word;
    asm volatile("mrs %0, fpcr" : "=r"(word));
    return word;
}
inline void set(uint64_t word) { asm volatile("msr fpcr, %0" : : "r"(word) : "memory"); }

#else

constexpr uint64_t roundingField = 0x6000, flushesToZero = _MM_FLUSH_ZERO_ON | _MM_DENORMALS_ZERO_ON;
constexpr uint64_t flags = 0x3f;
constexpr uint64_t cases[] = {0, flushesToZero, _MM_EXCEPT_DIV_ZERO, flushesToZero | _MM_EXCEPT_DENORM};

inline uint64_t word() { return _mm_getcsr(); }
inline void set(uint64_t word) { _mm_setcsr(static_cast<unsigned>(word)); }

#endif

}  // namespace harness::control
