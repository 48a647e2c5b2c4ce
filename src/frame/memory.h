// Memory of one call. The counts are of 16-bit and 32-bit items.
#pragma once

#include <cstdint>

#include "simd/level.h"
#include "zelcore.h"

namespace zel::ZEL_LEVEL {

ZEL_INLINE void* zelMalloc16(int32_t count) { return count < 1 ? nullptr : zelMalloc(count * 2); }
ZEL_INLINE void* zelMalloc32(int32_t count) { return count < 1 ? nullptr : zelMalloc(count * 4); }

// Gives its memory back when the call ends. Null where there was none to be had.
template <class Item>
class CallMemory {
  public:
    ZEL_INLINE explicit CallMemory(int32_t count)
        : items_(static_cast<Item*>(sizeof(Item) == 2 ? zelMalloc16(count) : zelMalloc32(count))) {
        static_assert(sizeof(Item) == 2 || sizeof(Item) == 4);
    }
    ZEL_INLINE ~CallMemory() { zelFree(items_); }
    CallMemory(const CallMemory&) = delete;
    CallMemory& operator=(const CallMemory&) = delete;

    ZEL_INLINE Item* get() const { return items_; }

  private:
    Item* items_;
};

}  // namespace zel::ZEL_LEVEL
