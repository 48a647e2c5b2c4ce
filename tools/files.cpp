#include "tools/files.h"

#include <algorithm>
#include <cctype>

#include "tools/errors.h"
#include "tools/frame.h"
#include "tools/sizes.h"

namespace tool {

namespace {

class RawReader : public Reader {
  public:
    RawReader(Source& source, const Format& format, Size size) : Reader(source) {
        format_ = &format;
        setSize(size);
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

void Reader::refuseAt(const std::string& what) const {
    throw UnsupportedError(source_.name() + ": frame " + std::to_string(done_ + 1) + ' ' + what);
}

void Reader::setSize(Size size) {
    if (std::max(size.width, size.height) > largestSide)
        throw UnsupportedError(source_.name() + ": frames have more than " + std::to_string(largestSide) + " pixels a side");
    size_ = size;
}

bool Reader::follows(bool (*isContent)(std::string_view begin)) {
    const auto isPadding = [](uint8_t c) { return c == 0 || std::isspace(c); };
    size_t padding = 0;
    do {
        source_.take(padding);
        const auto bytes = source_.available();
        if (bytes.empty()) return false;
        padding = static_cast<size_t>(std::ranges::find_if_not(bytes, isPadding) - bytes.begin());
    } while (padding == source_.available().size());
    source_.take(padding);
    // No more is waited for than it takes: who writes the pictures may wait for an answer.
    for (size_t count = 1; count <= longestMagic; ++count)
        if (isContent(source_.peek(count))) return true;
    if (done_ > 1) failAt("does not begin where the one before it ends");
    leaveOut("bytes behind the picture");
    return false;
}

bool Reader::isLeftOut() {
    if (!isOnePicture())
        refuseAt("is not of the size and kind of the first; --frames " + std::to_string(done_) + " converts those before it");
    leaveOut("the pictures behind the first");
    return true;
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
