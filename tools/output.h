// The file, pipe or numbered files that a conversion writes. None of them may be its input.
#pragma once

#include <memory>
#include <optional>

#include "tools/convert.h"
#include "tools/files.h"

namespace tool {

// The format that is asked for, or what loses least of those that the kind of file can hold.
const Format& targetFormat(const ConvertOptions& options, const Format& from);

class Output {
  public:
    Output(const ConvertOptions& options, const FrameKind& kind, const Source& source, int64_t frameCount);
    Writer& writer() { return *writer_; }
    void close();

  private:
    std::optional<Sink> sink_;
    std::unique_ptr<Writer> writer_;
};

}  // namespace tool
