// The exports of another build of the library, in the same process.
#pragma once

#include <string>

namespace bench {

// From here on `bind` takes the exports of the library in the file, or, with no name, those that the program is linked with.
void bindTo(const std::string& file);

// The function that `bind` calls in the place of this one.
void* bound(void* function);

template <class Function>
Function* bound(Function* function) {
    return reinterpret_cast<Function*>(bound(reinterpret_cast<void*>(function)));
}

}  // namespace bench
