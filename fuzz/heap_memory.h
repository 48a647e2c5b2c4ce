// Memory of which the address sanitizer sees every access behind the last byte, and nearly every one before the first.
#pragma once

#include <sanitizer/asan_interface.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

namespace fuzz {

class HeapMemory {
  public:
    HeapMemory() = default;
    // Begins so many bytes behind an address as malloc returns it.
    HeapMemory(size_t bytes, size_t offset) : memory_(static_cast<uint8_t*>(std::malloc(offset + bytes))) {
        ASAN_POISON_MEMORY_REGION(memory_.get(), offset);
        bytes_ = {memory_.get() + offset, bytes};
    }

    std::span<uint8_t> bytes() const { return bytes_; }

  private:
    struct Free {
        void operator()(uint8_t* p) const { std::free(p); }
    };
    std::unique_ptr<uint8_t, Free> memory_;
    std::span<uint8_t> bytes_;
};

}  // namespace fuzz
