// Reproducible image content.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>

namespace harness {

enum class Content {
    uniform,   // every value of a byte is as likely
    extremes,  // 0 and 255 alone, which saturate what can be saturated
};

class Random {
  public:
    explicit Random(uint64_t seed) : state_(seed * 0x9e3779b97f4a7c15 | 1) {}

    uint64_t next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 7;
        state_ ^= state_ << 17;
        return state_ * 0x2545f4914f6cdd1d;
    }

    void fill(std::span<uint8_t> bytes, Content content) {
        for (size_t i = 0; i < bytes.size(); i += 8) {
            uint64_t word = next();
            if (content == Content::extremes) word = (word & 0x0101010101010101) * 255;
            std::memcpy(bytes.data() + i, &word, bytes.size() - i < 8 ? bytes.size() - i : 8);
        }
    }

  private:
    uint64_t state_;
};

}  // namespace harness
