#include "harness/guarded_memory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <new>

namespace harness {

GuardedMemory::~GuardedMemory() { release(); }

void GuardedMemory::release() {
    if (!mapping_.empty()) munmap(mapping_.data(), mapping_.size());
    mapping_ = {};
}

std::span<uint8_t> GuardedMemory::pages(size_t bytes) {
    const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const size_t inner = (bytes + page - 1) / page * page;
    if (mapping_.size() < inner + 2 * page) {
        release();
        void* start = mmap(nullptr, inner + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (start == MAP_FAILED) throw std::bad_alloc();
        mapping_ = {static_cast<uint8_t*>(start), inner + 2 * page};
        if (mprotect(mapping_.data() + page, inner, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
    }
    return mapping_.subspan(page, mapping_.size() - 2 * page);
}

}  // namespace harness
