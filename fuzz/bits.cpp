#include "model/bits.h"

#include <vector>

#include "cases.h"
#include "harness/features.h"
#include "heap_memory.h"
#include "model/entry.h"
#include "zelcc/reducebits.h"

namespace fuzz {

std::optional<std::string> tryBits(Choices& choices) {
    const ZelSize size{choices.from(1, choices.oneOf({70, 70, 300})), choices.from(1, choices.oneOf({4, 40}))};
    const int offset = choices.below(choices.oneOf({8, 1000}));
    const bool isDiffused = choices.flag();
    const int threshold = choices.oneOf({choices.below(256), 0, 127, 255});
    const int bitRowBytes = (offset % 8 + size.width + 7) / 8;
    const int step = size.width + choices.below(4), bitStep = bitRowBytes + choices.below(4);
    const HeapMemory source(static_cast<size_t>(step * (size.height - 1) + size.width), choices.below(32)),
        destination(static_cast<size_t>(bitStep * (size.height - 1) + bitRowBytes), choices.below(32));
    choices.random().fill(source.bytes(), choices.flag() ? harness::Content::uniform : harness::Content::extremes);
    choices.putInto(source.bytes());
    std::vector<uint8_t> before(destination.bytes().size());
    choices.random().fill(before, harness::Content::uniform);

    // The first row is the lowest one.
    const bool isBottomUp = choices.flag(), isBitsBottomUp = choices.flag();
    const size_t from = isBottomUp ? static_cast<size_t>(step * (size.height - 1)) : 0,
                 to = isBitsBottomUp ? static_cast<size_t>(bitStep * (size.height - 1)) : 0;
    const model::BitImage image{size, offset, threshold, isBottomUp ? -step : step, isBitsBottomUp ? -bitStep : bitStep};
    std::vector<uint8_t> expected = before;
    model::reduceToBits(image, isDiffused, source.bytes().data() + from, expected.data() + to);
    harness::noteLevels();
    for (const harness::Level& level : harness::levels()) {
        if (level.hasOwnExportsOnly) continue;
        std::ranges::copy(before, destination.bytes().begin());
        const ZelStatus status = model::inLibrary(level.library, "zeliReduceBits_8u1u_C1R", zeliReduceBits_8u1u_C1R)(
            source.bytes().data() + from, image.fromStep, destination.bytes().data() + to, image.toStep, offset, size, 0, 0,
            isDiffused ? zelDitherStucki : zelDitherNone, static_cast<uint8_t>(threshold));
        if (status == zelStsNoErr && std::ranges::equal(expected, destination.bytes())) continue;
        return std::string("zeliReduceBits_8u1u_C1R, ") + std::to_string(size.width) + " x " + std::to_string(size.height) +
               ", offset " + std::to_string(offset) + ", threshold " + std::to_string(threshold) +
               (isDiffused ? ", diffused, " : ", ") + level.name + ": status " + std::to_string(status) + ", or other bits";
    }
    return std::nullopt;
}

}  // namespace fuzz
