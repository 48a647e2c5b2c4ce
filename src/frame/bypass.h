// When stores bypass the caches: the one rule for all families. A store to a line that is in no cache first reads the line from
// memory, unless it bypasses the caches; one that bypasses them is slower where they would have held the image, and so is the
// call that reads it next. No result depends on it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "simd/vector.h"

// Bytes that a call may read and write together and still finds in the caches, set once by the dispatch constructor.
extern "C" [[gnu::visibility("hidden")]] int32_t zelCachedCallBytes;

// The shortest row that the processor's own instruction moves at least as fast as vectors do, set with it.
extern "C" [[gnu::visibility("hidden")]] int32_t zelMovedAtOnceBytes;

namespace zel::ZEL_LEVEL {

ZEL_INLINE bool exceedsCaches([[maybe_unused]] size_t bytes) {
    if constexpr (traits.bypasses)
        return bytes > size_t(zelCachedCallBytes);
    else
        return false;
}

// Whether a row is moved by one instruction. In and beyond the second cache it beats vectors, and stores that bypass the caches
// as well until the rows alone fill these. Rows that lie differently in lines aren't: some processors take many times as long for
// them.
ZEL_INLINE bool isMovedAtOnce([[maybe_unused]] const uint8_t* to, [[maybe_unused]] const uint8_t* from,
                              [[maybe_unused]] size_t bytes) {
    if constexpr (traits.bypasses)
        return bytes >= size_t(zelMovedAtOnceBytes) && !exceedsCaches(2 * bytes) &&
               (reinterpret_cast<uintptr_t>(to) - reinterpret_cast<uintptr_t>(from)) % lineBytes == 0;
    else
        return false;
}

// Says whether the stores of a call bypass the caches. Those that do have reached memory when it ends.
class Bypass {
  public:
    ZEL_INLINE explicit Bypass(bool bypassing) : bypassing_(bypassing) {}
    ZEL_INLINE ~Bypass() {
        if (bypassing_) storeFence();
    }
    Bypass(const Bypass&) = delete;
    Bypass& operator=(const Bypass&) = delete;

    ZEL_INLINE operator bool() const { return bypassing_; }

  private:
    const bool bypassing_;
};

// No conversion moves more bytes a site, and no pass of one more a pixel.
constexpr size_t maxSiteBytes = 4096;

// The least number of sites from p on after which a stream reaches the boundary of a line: `bytes` times that number is then
// -p, modulo the line. An odd factor is taken away by its inverse, a power of two by a shift; -1 where p is no multiple of that.
ZEL_INLINE ptrdiff_t sitesToLine(const uint8_t* p, unsigned bytes) {
    const auto shift = unsigned(__builtin_ctz(bytes | unsigned(lineBytes)));
    const unsigned odd = bytes >> shift, inverse = odd * (2 - odd * odd);
    const auto place = unsigned(reinterpret_cast<uintptr_t>(p) % lineBytes);
    if (place & ((1u << shift) - 1)) return -1;
    return ptrdiff_t((0 - (place >> shift)) * inverse % (unsigned(lineBytes) >> shift));
}

}  // namespace zel::ZEL_LEVEL
