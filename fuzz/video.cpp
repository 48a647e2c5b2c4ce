// Fuzz target of libzelvideo: one call on planes that end with their last byte, beside its model, or a description of any
// numbers. The input picks formats, options, size, steps, rows and content.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "choices.h"
#include "heap_memory.h"
#include "video/formats.h"
#include "video/model.h"

namespace fuzz {
namespace {

using ::video::Picture;

// Owns the planes of a picture.
struct HeapFrame {
    HeapFrame(const ZelvFormat& format, ZelSize size, Choices& choices) : picture{format, size, {}, {}} {
        for (int p = 0; p < ::video::planeCount(format); ++p) {
            const size_t step = static_cast<size_t>(::video::rowBytes(format, p, size.width) + choices.below(41));
            const auto rows = static_cast<size_t>(::video::rowCount(format, p, size.height));
            const bool upward = choices.flag();
            const auto rowBytes = static_cast<size_t>(::video::rowBytes(format, p, size.width));
            memory[p] = HeapMemory((rows - 1) * step + rowBytes, choices.flag() ? static_cast<size_t>(choices.below(32)) : 0);
            choices.random().fill(memory[p].bytes(), harness::Content::uniform);
            picture.planes[p] = memory[p].bytes().data() + (upward ? (rows - 1) * step : 0);
            picture.steps[p] = static_cast<int32_t>(upward ? 0 - step : step);
        }
    }
    Picture picture;
    HeapMemory memory[4];
};

void convertAny(Choices& choices) {
    const auto below = [&](int n) { return choices.below(n); };
    const ZelvFormat from = ::video::anyFormat(below), to = ::video::anyFormat(below);
    const ZelvOptions options{below(2), below(2), below(2)};
    const ZelSize size{1 + below(choices.below(8) == 0 ? 2200 : 150), 1 + below(9)};
    ZelvPlan plan;
    if (zelvMakePlan(&plan, &from, &to, &options) != zelStsNoErr) std::abort();
    HeapFrame source(from, size, choices), result(to, size, choices);
    choices.putInto(source.memory[0].bytes());
    const auto &f = source.picture, &t = result.picture;
    std::vector<uint8_t> before[4], given[4];
    for (int p = 0; p < 4; ++p) before[p].assign(result.memory[p].bytes().begin(), result.memory[p].bytes().end());
    for (int row = 0; row < size.height;) {
        const int rows = std::min(size.height - row, 2 * (1 + below(5)));
        if (zelvConvertRows(&plan, f.planes.data(), f.steps.data(), t.planes.data(), t.steps.data(), size, row, rows) !=
            zelStsNoErr)
            std::abort();
        row += rows;
    }
    for (int p = 0; p < 4; ++p) {
        given[p].assign(result.memory[p].bytes().begin(), result.memory[p].bytes().end());
        std::copy(before[p].begin(), before[p].end(), result.memory[p].bytes().begin());
    }
    ::video::convert(f, t, options);
    for (int p = 0; p < 4; ++p)
        if (!std::equal(given[p].begin(), given[p].end(), result.memory[p].bytes().begin())) {
            std::fprintf(stderr, "layout %d \"%s\" of %d bits to %d \"%s\" of %d bits, %d x %d: plane %d differs\n", from.layout,
                         from.components, from.depth, to.layout, to.components, to.depth, size.width, size.height, p);
            std::abort();
        }
}

// A plan is written or refused, and what is accepted can be used.
void describeAny(Choices& choices) {
    ZelvFormat formats[2];
    for (ZelvFormat& f : formats) {
        f = ::video::anyFormat([&](int n) { return choices.below(n); });
        int32_t* const fields[] = {&f.layout, &f.sampling, &f.depth, &f.alignment, &f.matrix,
                                   &f.range,  &f.location, &f.kr,    &f.kb};
        *choices.oneOf(fields) = choices.from(-3, 40);
        if (choices.flag()) f.components[choices.below(8)] = "YUVRGBAX"[choices.below(8)];
    }
    ZelvPlan plan;
    if (zelvMakePlan(&plan, &formats[0], &formats[1], nullptr) != zelStsNoErr) return;
    const ZelSize size{1 + choices.below(70), 1 + choices.below(4)};
    const HeapFrame source(formats[0], size, choices), result(formats[1], size, choices);
    zelvConvert(&plan, source.picture.planes.data(), source.picture.steps.data(), result.picture.planes.data(),
                result.picture.steps.data(), size);
}

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::Choices choices(data, size);
    choices.below(4) == 0 ? fuzz::describeAny(choices) : fuzz::convertAny(choices);
    return 0;
}
