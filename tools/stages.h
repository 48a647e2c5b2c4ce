// Frames on their way through three threads: one reads, one converts, with help, and one writes.
#pragma once

#include "tools/converter.h"
#include "tools/files.h"
#include "tools/output.h"
#include "tools/progress.h"

namespace tool {

// Closes the output when all is written. Where reading or converting fails, the frames before are written, and the output is
// closed if there are any; then the error is thrown.
void convertAll(Reader& reader, Converter& converter, Output& output, int64_t most, Progress& progress);

}  // namespace tool
