// Steps at the limits of their type, on images that span gigabytes of reserved addresses.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "harness/conversion_test.h"

namespace harness {
namespace {

// A plane of which only the pages under its rows can be accessed.
class SparsePlane {
  public:
    SparsePlane(int rows, int rowsAbove, int rowBytes, std::ptrdiff_t step)
        : rows_(rows + rowsAbove), rowsAbove_(rowsAbove), rowBytes_(rowBytes), step_(step) {
        const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
        const size_t span = static_cast<size_t>(std::abs(step)) * (rows_ - 1);
        size_ = (span + rowBytes) / page * page + 3 * page;
        void* start = mmap(nullptr, size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (start == MAP_FAILED) return;
        start_ = static_cast<uint8_t*>(start);
        first_ = start_ + page + (step < 0 ? span : 0) + rowsAbove * step;
        for (int i = -rowsAbove; i < rows; ++i) {
            const size_t offset = row(i) - start_, from = offset / page * page, to = (offset + rowBytes) / page * page + page;
            if (mprotect(start_ + from, to - from, PROT_READ | PROT_WRITE) != 0) std::abort();
        }
    }
    SparsePlane(const SparsePlane&) = delete;
    SparsePlane& operator=(const SparsePlane&) = delete;
    ~SparsePlane() {
        if (start_) munmap(start_, size_);
    }

    bool isMapped() const { return start_; }
    uint8_t* row(int i) const { return first_ + i * step_; }

    void copyFrom(const PicturePlane& p) const {
        for (int i = -rowsAbove_; i < rows_ - rowsAbove_; ++i)
            std::copy_n(p.first + std::ptrdiff_t{i} * p.step, rowBytes_, row(i));
    }
    bool equals(const PicturePlane& p) const {
        for (int i = -rowsAbove_; i < rows_ - rowsAbove_; ++i)
            if (!std::equal(row(i), row(i) + rowBytes_, p.first + std::ptrdiff_t{i} * p.step)) return false;
        return true;
    }

  private:
    int rows_, rowsAbove_, rowBytes_;
    std::ptrdiff_t step_;
    size_t size_;
    uint8_t* start_ = nullptr;
    uint8_t* first_ = nullptr;
};

using SparsePlanes = std::vector<std::unique_ptr<SparsePlane>>;

SparsePlanes spread(const Picture& picture, int32_t step, model::Operand& operand) {
    SparsePlanes planes;
    for (int i = 0; i < picture.layout->planeCount; ++i) {
        const model::PlaneShape& shape = picture.layout->planes[i];
        planes.push_back(std::make_unique<SparsePlane>(shape.rows(picture.size.height), picture.planes[i].rowsAbove,
                                                       shape.rowBytes(picture.size.width), picture.layout->pitch(step)));
        if (!planes[i]->isMapped()) return {};
        planes[i]->copyFrom(picture.planes[i]);
        operand.planes[i] = planes[i]->row(0);
        operand.steps[i] = step;
    }
    return planes;
}

TEST_P(Conversion, AcceptsStepsAtTheLimits) {
    if (!tested().entry.takesSteps) GTEST_SKIP() << "there are no steps";
    if (sizeof(void*) < 8) GTEST_SKIP() << "the address space is too small";
    const ZelSize size = smallSize(76);
    for (const int32_t step : {1 << 30, -(1 << 30), INT32_MAX, INT32_MIN}) {
        Placement compact = aligned;
        if (step < 0 && tested().checksSteps) continue;
        if (step % 16 != 0 && tested().peculiarity == model::Peculiarity::differsByAddress) continue;
        if (step % 16 != 0) compact.offsets = allPlanes(1);
        Random random(seed());
        const auto [source, destination] = lay(size, {compact, compact}, random, Content::uniform);

        model::Call call{.source = {},
                         .destination = {},
                         .size = size,
                         .alpha = 77,
                         .slice = tested().slice.argument,
                         .parameters = tested().firstParameters()};
        const SparsePlanes sparseSource = spread(source, step, call.source);
        const SparsePlanes sparseDestination = spread(destination, step, call.destination);
        if (sparseSource.empty() || sparseDestination.empty()) GTEST_SKIP() << "no addresses for steps of " << step;

        ASSERT_EQ(compareWithModel(tested(), source, destination, size, call.alpha), std::nullopt);
        ASSERT_EQ(tested().entry.call(call), tested().status(size));
        for (int i = 0; i < destination.layout->planeCount; ++i)
            EXPECT_TRUE(sparseDestination[i]->equals(destination.planes[i])) << "step " << step << ", plane " << i;
    }
}

}  // namespace
}  // namespace harness
