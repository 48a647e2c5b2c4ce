// Frames on their way through three threads: one reads, one converts, with help, and one writes.
#pragma once

#include "tools/converter.h"
#include "tools/files.h"
#include "tools/progress.h"

namespace tool {

// Returns the number of frames. Where reading or converting fails, the frames before are written, then the error is thrown.
int64_t convertAll(Reader& reader, Converter& converter, Writer& writer, int64_t most, Progress& progress);

}  // namespace tool
