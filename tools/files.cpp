#include "tools/files.h"

#include <algorithm>

#include "tools/errors.h"
#include "tools/frame.h"

namespace tool {

namespace {

class RawReader : public Reader {
  public:
    RawReader(Source& source, const Format& format, Size size) : Reader(source) {
        format_ = &format;
        size_ = size;
        bytes_ = fileBytes(format, size);
        if (source.fileSize() >= 0) frameCount_ = source.fileSize() / static_cast<int64_t>(bytes_);
    }

    bool next(uint8_t* frame) override {
        const size_t got = source_.read(frame, bytes_);
        if (got == 0 && done_ > 0) return false;
        if (got < bytes_) failAt("has " + std::to_string(got) + " of " + std::to_string(bytes_) + " bytes; is --size right?");
        ++done_;
        return true;
    }

  private:
    size_t bytes_;
};

class RawWriter : public Writer {
  public:
    RawWriter(Sink& sink, size_t bytes) : sink_(sink), bytes_(bytes) {}
    void write(const uint8_t* frame) override { sink_.write(frame, bytes_); }

  private:
    Sink& sink_;
    size_t bytes_;
};

}  // namespace

void Reader::failAt(const std::string& what) const {
    throw DataError(source_.name() + ": frame " + std::to_string(done_ + 1) + ' ' + what);
}

const std::vector<FileKind>& fileKinds() {
    static const std::vector<FileKind> kinds = {y4mFiles, pngFiles, jpegFiles, pnmFiles, pfmFiles};
    return kinds;
}

const FileKind* kindNamed(std::string_view name) {
    for (const FileKind& kind : fileKinds())
        if (kind.name == name) return &kind;
    return nullptr;
}

const FileKind* kindByName(std::string_view path) {
    std::string lower(path);
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    for (const FileKind& kind : fileKinds())
        if (std::ranges::any_of(kind.endings, [&](std::string_view end) { return lower.ends_with(end); })) return &kind;
    return nullptr;
}

const FileKind* kindByContent(std::string_view begin) {
    for (const FileKind& kind : fileKinds())
        if (kind.isContent(begin)) return &kind;
    return nullptr;
}

std::unique_ptr<Reader> rawReader(Source& source, const Format& format, Size size) {
    return std::make_unique<RawReader>(source, format, size);
}

std::unique_ptr<Writer> rawWriter(Sink& sink, const FrameKind& kind) {
    return std::make_unique<RawWriter>(sink, fileBytes(kind.format, kind.size));
}

}  // namespace tool
