// Cases that are no comparison of a row of the models' table with its model. Each returns what is wrong, if anything.
#pragma once

#include <optional>
#include <string>

#include "choices.h"
#include "model/export.h"

namespace fuzz {

// A region of a mosaic; the buffer has the bytes that its rule asks for.
std::optional<std::string> tryMosaic(Choices& choices);

// Bytes to bits.
std::optional<std::string> tryBits(Choices& choices);

// A call with arguments that are wrong, or memory that overlaps.
std::optional<std::string> tryHostile(const model::Export& tested, Choices& choices);

}  // namespace fuzz
