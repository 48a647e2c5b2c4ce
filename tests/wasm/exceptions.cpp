// What is thrown ends the program, for the C++ library was built without exceptions.
#include <cstddef>
#include <cstdlib>

extern "C" {
void* __cxa_allocate_exception(size_t) noexcept { std::abort(); }
void __cxa_free_exception(void*) noexcept { std::abort(); }
[[noreturn]] void __cxa_throw(void*, void*, void (*)(void*)) { std::abort(); }
}
