#include "library.h"

#include <dlfcn.h>

#include <stdexcept>

namespace bench {

namespace {
void* library = nullptr;
}

void bindTo(const std::string& file) {
    library = nullptr;
    if (file.empty()) return;
    library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) throw std::runtime_error(dlerror());
}

void* bound(void* function) {
    if (!library) return function;
    Dl_info info{};
    void* other = dladdr(function, &info) && info.dli_sname ? dlsym(library, info.dli_sname) : nullptr;
    if (!other)
        throw std::runtime_error(std::string("the other library has no ") + (info.dli_sname ? info.dli_sname : "such function"));
    return other;
}

}  // namespace bench
