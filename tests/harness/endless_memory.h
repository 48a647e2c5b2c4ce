// Memory for rows of more bytes than there are.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace harness {

// Some megabytes that repeat themselves without end: a multiple of every pixel's bytes.
class EndlessMemory {
  public:
    static constexpr size_t period = 48 << 20;

    explicit EndlessMemory(size_t bytes) : size_((bytes + period - 1) / period * period) {
        const int file = memfd_create("endless", 0);
        if (file < 0 || ftruncate(file, period) != 0) return;
        void* const start = mmap(nullptr, size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (start != MAP_FAILED) start_ = static_cast<uint8_t*>(start);
        for (size_t at = 0; start_ && at < size_; at += period)
            if (mmap(start_ + at, period, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0) == MAP_FAILED) std::abort();
        close(file);
    }
    EndlessMemory(const EndlessMemory&) = delete;
    ~EndlessMemory() {
        if (start_) munmap(start_, size_);
    }

    uint8_t* data() const { return start_; }

  private:
    size_t size_;
    uint8_t* start_ = nullptr;
};

}  // namespace harness
