// What a case is made of.
#pragma once

#include <algorithm>
#include <cstring>
#include <span>

#include "harness/random.h"

namespace fuzz {

// Choices by the bytes of the input, and behind its end by random numbers that follow from it. So the shortest input is a whole
// case, whose choices are as varied as any, and a longer one decides more of them by itself.
class Choices {
  public:
    Choices(const uint8_t* data, size_t size) : rest_(data, size), random_(hash(rest_)) {}

    int below(int count) {
        uint16_t word = static_cast<uint16_t>(random_.next() >> 48);
        if (rest_.size() >= sizeof word) {
            std::memcpy(&word, rest_.data(), sizeof word);
            rest_ = rest_.subspan(sizeof word);
        }
        return word % count;
    }
    int from(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    bool flag() { return below(2) == 1; }
    template <class T, size_t n>
    const T& oneOf(const T (&values)[n]) {
        return values[below(n)];
    }
    harness::Random& random() { return random_; }

    // Gives what is left of the input away.
    void putInto(std::span<uint8_t> bytes) {
        const size_t count = std::min(bytes.size(), rest_.size());
        std::copy_n(rest_.begin(), count, bytes.begin());
        rest_ = rest_.subspan(count);
    }

  private:
    static uint64_t hash(std::span<const uint8_t> bytes) {
        uint64_t hash = 0xcbf29ce484222325;
        for (const uint8_t byte : bytes) hash = (hash ^ byte) * 0x100000001b3;
        return hash;
    }

    std::span<const uint8_t> rest_;
    harness::Random random_;
};

}  // namespace fuzz
