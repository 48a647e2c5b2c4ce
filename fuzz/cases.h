// Cases of the exports that are no rows of the models' table. Each returns what is wrong, if anything.
#pragma once

#include <optional>
#include <string>

#include "choices.h"

namespace fuzz {

// A region of a mosaic; the buffer has the bytes that its rule asks for.
std::optional<std::string> tryMosaic(Choices& choices);

// Bytes to bits.
std::optional<std::string> tryBits(Choices& choices);

}  // namespace fuzz
