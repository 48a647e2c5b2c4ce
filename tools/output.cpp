#include "tools/output.h"

#include <algorithm>
#include <tuple>

#include "tools/errors.h"

namespace tool {

namespace {

// Null for raw files.
const FileKind* outputKind(const ConvertOptions& options) {
    return options.outputKind == "auto" ? kindByName(options.output) : kindNamed(options.outputKind);
}

bool losesSamples(const Format& from, const Format& to) {
    const Site a = from.site, b = to.site;
    const bool isSparser = to.model == Model::ycbcr && (b.width > a.width || b.height > a.height);
    return isSparser || to.bits < std::min(from.bits, 16) || (to.model == Model::gray && from.model != Model::gray);
}

// A name with a number in it, as in frame-%04d.png: what stands before, the digits, and what stands behind.
struct Pattern {
    std::string before, behind;
    size_t digits;

    std::string name(int64_t number) const {
        std::string text = std::to_string(number);
        if (text.size() < digits) text.insert(0, digits - text.size(), '0');
        return before + text + behind;
    }
};

std::optional<Pattern> patternOf(const std::string& path) {
    const size_t begin = path.find('%'), end = path.find('d', begin);
    if (begin == std::string::npos || end == std::string::npos) return std::nullopt;
    const std::string digits = path.substr(begin + 1, end - begin - 1);
    if (digits.size() > 2 || !std::ranges::all_of(digits, [](unsigned char c) { return std::isdigit(c); })) return std::nullopt;
    return Pattern{path.substr(0, begin), path.substr(end + 1), digits.empty() ? 0 : std::stoul(digits)};
}

std::unique_ptr<Writer> makeWriter(const FileKind* file, Sink& sink, const FrameKind& kind) {
    return file ? file->write(sink, kind) : rawWriter(sink, kind);
}

void refuseInput(const Source& source, const std::string& path) {
    if (source.isAt(path)) throw UsageError("input and output are the same file, " + path + "; give the output another name");
}

class NumberedWriter : public Writer {
  public:
    // The count of frames may be unknown.
    NumberedWriter(Pattern pattern, const FileKind* file, const FrameKind& kind, const Source& source, int64_t frameCount)
        : pattern_(std::move(pattern)), file_(file), kind_(kind), source_(source) {
        for (int64_t i = 1; i <= frameCount; ++i) refuseInput(source_, pattern_.name(i));
    }

    void write(const uint8_t* frame) override {
        const std::string path = pattern_.name(++number_);
        refuseInput(source_, path);
        Sink sink(path);
        makeWriter(file_, sink, kind_)->write(frame);
        sink.close();
    }

  private:
    Pattern pattern_;
    const FileKind* file_;
    FrameKind kind_;
    const Source& source_;
    int64_t number_ = 0;
};

// For plain files that hold one picture.
class SingleWriter : public Writer {
  public:
    SingleWriter(std::unique_ptr<Writer> writer, std::string path) : writer_(std::move(writer)), path_(std::move(path)) {}

    void write(const uint8_t* frame) override {
        if (isWritten_)
            throw UsageError(path_ +
                             " has frame 1 and can hold no more; give a name with a number, as frame-%04d.png, or --frames 1");
        writer_->write(frame);
        isWritten_ = true;
    }

  private:
    std::unique_ptr<Writer> writer_;
    std::string path_;
    bool isWritten_ = false;
};

}  // namespace

const Format& targetFormat(const ConvertOptions& options, const Format& from) {
    const FileKind* kind = outputKind(options);
    if (!options.to.empty()) {
        const Format& to = formatNamed(options.to);
        if (kind && std::ranges::find(kind->formats, to.name) == kind->formats.end()) {
            std::string known;
            for (std::string_view name : kind->formats) known += ' ' + std::string(name);
            throw UsageError("a " + std::string(kind->name) + " file can't hold " + options.to + ", but:" + known);
        }
        return to;
    }
    if (!kind) throw UsageError("the output is raw: say what to write, as in --to rgb24");
    const Format* best = nullptr;
    std::pair<bool, size_t> least;
    for (std::string_view name : kind->formats) {
        const Format& to = formatNamed(name);
        const auto way = findWay(canonical(from), to, options.wishes);
        if (!way) continue;
        const std::pair rank{losesSamples(from, to), way->size()};
        if (best && least <= rank) continue;
        best = &to;
        least = rank;
    }
    return best ? *best : formatNamed(kind->formats.front());  // the search for a way tells what is reachable
}

Output::Output(const ConvertOptions& options, const FrameKind& kind, const Source& source, int64_t frameCount) {
    const FileKind* file = outputKind(options);
    const bool isMany = !file || file->holdsMany || options.output == "-";
    if (auto pattern = patternOf(options.output)) {
        writer_ = std::make_unique<NumberedWriter>(std::move(*pattern), file, kind, source, frameCount);
        return;
    }
    refuseInput(source, options.output);
    writer_ = makeWriter(file, sink_.emplace(options.output), kind);
    if (!isMany) writer_ = std::make_unique<SingleWriter>(std::move(writer_), options.output);
}

void Output::close() {
    writer_.reset();
    if (sink_) sink_->close();
}

}  // namespace tool
