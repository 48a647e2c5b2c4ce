// Memory between two inaccessible pages: a byte too far ends the process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace harness {

class GuardedMemory {
  public:
    GuardedMemory() = default;
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;
    ~GuardedMemory();

    // Whole pages, at least as many bytes as asked for. What it returned before is lost when it has to grow.
    std::span<uint8_t> pages(size_t bytes);

  private:
    void release();

    std::span<uint8_t> mapping_;
};

}  // namespace harness
