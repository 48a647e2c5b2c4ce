// Inputs of the readers: whole files to begin with, and changes that leave a file whole enough to be read further.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "choices.h"

namespace fuzz {

using Bytes = std::vector<uint8_t>;

// A file as the program writes it, of any kind and format.
const Bytes& writtenFile(Choices& choices);
// Another one of the same kind, if it is of any.
const Bytes& writtenFileLike(const Bytes& file, Choices& choices);

bool isPng(std::span<const uint8_t> file);

// Changes the content of a chunk of some PNG picture, drops the chunk or puts another one before it. Lengths stay right.
void changeChunk(Bytes& file, const std::function<void(Bytes&)>& change, Choices& choices);

// Makes the checksums of all chunks right, as far as lengths lead from one to the next; a length that leads behind the end
// becomes what is there.
void mendChecksums(std::span<uint8_t> file);

}  // namespace fuzz
