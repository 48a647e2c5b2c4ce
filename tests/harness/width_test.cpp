// Rows of more bytes than 31 bits count, in memory that is mapped again and again.
#include <cstring>
#include <list>

#include "harness/conversion_test.h"
#include "harness/endless_memory.h"

namespace harness {
namespace {

class HugeRows : public Conversion {
  protected:
    static constexpr uint8_t grey = 0x3e;  // a number between 0 and 1 as a float, too

    int largestUnit() const {
        int largest = 1;
        for (const model::Layout* layout : {&tested().source, &tested().destination})
            for (const model::PlaneShape& p : layout->planes) largest = std::max(largest, p.unitBytes >> p.xShift);
        return largest;
    }

    // The planes of one side; rows lie over each other where the export takes that.
    std::list<EndlessMemory> lay(const model::Layout& layout, ZelSize size, model::Operand& operand) {
        std::list<EndlessMemory> planes;
        for (int i = 0; i < layout.planeCount; ++i) {
            const model::PlaneShape& p = layout.planes[i];
            const size_t rowBytes = static_cast<size_t>(p.units(size.width, p.xShift)) * static_cast<size_t>(p.unitBytes);
            const int rows = tested().entry.takesSteps ? 1 : p.rows(size.height);
            operand.planes[i] = planes.emplace_back(rowBytes * static_cast<size_t>(rows) + 4096).data();
            operand.steps[i] = tested().checksSteps ? 64 : 0;
            if (operand.planes[i]) std::memset(operand.planes[i], grey, EndlessMemory::period);
        }
        return planes;
    }
    bool isConverted(const model::Call& call) { return tested().entry.call(call) >= zelStsNoErr; }
};

// Equal pixels become equal ones, as far as a small image with the same first columns tells what they become.
TEST_P(HugeRows, AreConvertedLikeOthers) {
    if (sizeof(void*) < 8) GTEST_SKIP() << "the address space is too small";
    const int height = std::max(1, tested().geometry.minimum.height);
    constexpr size_t bytes = (size_t{1} << 31) + EndlessMemory::period / 2, widest = INT32_MAX;
    const ZelSize huge{static_cast<int>(std::min(bytes / static_cast<size_t>(largestUnit()), widest)) & ~63, height};
    const ZelSize small{4096, height};
    Random random(seed());
    const Pictures expected = Conversion::lay(small, {aligned, aligned}, random, Content::uniform);
    for (const Picture* picture : {&expected.source, &expected.destination})
        for (const PicturePlane& p : picture->usedPlanes()) std::ranges::fill(p.memory, grey);

    model::Call call{.source = {}, .destination = {}, .size = huge, .alpha = 77, .parameters = tested().firstParameters()};
    call.slice = tested().slice.argument;
    const auto destination = lay(tested().destination, huge, call.destination);
    const auto source = lay(tested().source, huge, call.source);
    ASSERT_TRUE(isConverted(call));
    call.source = expected.source.operand();
    call.destination = expected.destination.operand();
    call.size = small;
    ASSERT_TRUE(isConverted(call));
    int number = 0;
    for (const EndlessMemory& plane : destination) {
        const PicturePlane& p = expected.destination.planes[number];
        const auto compared = static_cast<size_t>(tested().destination.planes[number].rowBytes(small.width - 64));
        const auto [found, wanted] = std::mismatch(plane.data(), plane.data() + compared, p.first);
        EXPECT_EQ(found - plane.data(), static_cast<std::ptrdiff_t>(compared))
            << "plane " << number << ": " << +*found << ", not " << +*wanted;
        ++number;
    }
}

// One in some, of those that do not work in place.
std::vector<const model::Export*> someExports() {
    std::vector<const model::Export*> some;
    int number = 0;
    for (const std::span<const model::Export> family : model::families())
        for (const model::Export& e : family)
            if (isOfWholeImages(e) && e.peculiarity == model::Peculiarity::none && !e.entry.isInPlace && ++number % 43 == 0)
                some.push_back(&e);
    return some;
}
INSTANTIATE_TEST_SUITE_P(All, HugeRows, testing::ValuesIn(someExports()), nameOf);

}  // namespace
}  // namespace harness
