// What the headers say in words, for documentation and messages. texts.cpp is written from them when it is built.
#pragma once

#include <cstdint>
#include <span>

namespace zelpy {

struct Constant {
    const char* name;
    int32_t value;
    const char* meaning;  // of a status
};

std::span<const Constant> statuses();
std::span<const Constant> constants();            // all the others
std::span<const char* const> docstrings();        // of the functions, in their order
std::span<const char* const> coefficientNames();  // what the C function calls them

}  // namespace zelpy
