// GuardedMemory where no page can be made inaccessible: margins around it, which end the process when they were written to.
#include <algorithm>
#include <cstdlib>

#include "harness/guarded_memory.h"

namespace harness {

namespace {

constexpr size_t page = 4096;

// A pattern without a period of a power of two, so that bytes moved along by a vector show.
uint8_t marginByte(size_t i) { return static_cast<uint8_t>(i % 251 + 1); }

bool isUntouched(std::span<const uint8_t> margin) {
    size_t i = 0;
    return std::ranges::all_of(margin, [&](uint8_t byte) { return byte == marginByte(i++); });
}

}  // namespace

GuardedMemory::~GuardedMemory() { release(); }

void GuardedMemory::release() {
    if (mapping_.empty()) return;
    if (!isUntouched(mapping_.first(page)) || !isUntouched(mapping_.last(page))) std::abort();
    std::free(mapping_.data());
    mapping_ = {};
}

std::span<uint8_t> GuardedMemory::pages(size_t bytes) {
    const size_t inner = (bytes + page - 1) / page * page;
    if (mapping_.size() < inner + 2 * page) {
        release();
        const size_t size = inner + 2 * page;
        void* const start = std::aligned_alloc(page, size);
        if (!start) std::abort();
        mapping_ = {static_cast<uint8_t*>(start), size};
        std::ranges::fill(mapping_, uint8_t{0});
        for (size_t i = 0; i < page; ++i) mapping_[i] = mapping_[size - page + i] = marginByte(i);
    }
    return mapping_.subspan(page, mapping_.size() - 2 * page);
}

}  // namespace harness
