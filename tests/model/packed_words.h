// Model of pixels packed into one 16-bit word, with a channel of 5 or 6 bits in each of its fields.
#pragma once

#include <cstdint>
#include <vector>

#include "model/export.h"

namespace model {

inline constexpr Layout words = pixels(Element::u16, 1);

// Three fields from the low bits upward; whatever lies above is not read.
struct Fields {
    int firstBits, secondBits, thirdBits;
};

inline constexpr Fields fields555{5, 5, 5}, fields565{5, 6, 5};

// A field becomes the high bits of a byte.
constexpr std::array<uint8_t, 3> bytesOf(const Fields& f, uint16_t word) {
    const auto field = [](int value, int bits) { return static_cast<uint8_t>(value % (1 << bits) << (8 - bits)); };
    return {field(word, f.firstBits), field(word >> f.firstBits, f.secondBits),
            field(word >> (f.firstBits + f.secondBits), f.thirdBits)};
}

constexpr uint16_t wordOf(const Fields& f, std::array<uint8_t, 3> bytes) {
    const int first = bytes[0] >> (8 - f.firstBits), second = bytes[1] >> (8 - f.secondBits),
              third = bytes[2] >> (8 - f.thirdBits);
    return static_cast<uint16_t>(first + (second << f.firstBits) + (third << (f.firstBits + f.secondBits)));
}

// The source's bytes, three a pixel in the order of the fields.
template <const Fields& fields>
void expandWords(const Conversion& c) {
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) {
            const auto bytes = bytesOf(fields, c.source.load<uint16_t>(c.source.layout->channels[0], x, y));
            std::memcpy(c.destination.planes[0].first + y * c.destination.planes[0].step + 3 * x, bytes.data(), 3);
        }
}

template <const Fields& fields>
void packWords(const Conversion& c) {
    for (int y = 0; y < c.size.height; ++y)
        for (int x = 0; x < c.size.width; ++x) {
            std::array<uint8_t, 3> bytes;
            std::memcpy(bytes.data(), c.source.planes[0].first + y * c.source.planes[0].step + 3 * x, 3);
            c.destination.store(c.destination.layout->channels[0], x, y, wordOf(fields, bytes));
        }
}

// What another model makes of the source's bytes, named by a layout of three bytes a pixel.
template <const Fields& fields, const Layout& layout, Model model>
void ofExpandedWords(const Conversion& c) {
    std::vector<uint8_t> bytes(static_cast<size_t>(c.size.width) * c.size.height * 3);
    Conversion expansion = c, ofBytes = c;
    expansion.destination = ofBytes.source = {&layout, {{{bytes.data(), ptrdiff_t{3} * c.size.width}}}};
    expandWords<fields>(expansion);
    model(ofBytes);
}

}  // namespace model
