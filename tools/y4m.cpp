// Y4M: a line of text, then frames of planes, each behind a line of its own.
#include <charconv>
#include <sstream>

#include "tools/errors.h"
#include "tools/files.h"
#include "tools/frame.h"

namespace tool {

namespace {

constexpr size_t longestLine = 4096;
constexpr std::string_view magic = "YUV4MPEG2";

struct Sampling {
    std::string_view tag, format;
};
// The tags of 4:2:0 differ in where chroma lies, which no function looks at. The first one of a format is written.
constexpr Sampling samplings[] = {{"420jpeg", "yuv420p"},   {"420mpeg2", "yuv420p"}, {"420paldv", "yuv420p"}, {"420", "yuv420p"},
                                  {"422", "yuv422p"},       {"444", "yuv444p"},      {"411", "yuv411p"},      {"410", "yuv410p"},
                                  {"444alpha", "yuva444p"}, {"mono", "gray"}};

int number(const std::string& text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : 0;
}

class Y4mReader : public Reader {
  public:
    explicit Y4mReader(Source& source) : Reader(source) {
        const auto first = source.line(longestLine);
        if (!first) throw DataError(source.name() + ": the header line has no end");
        std::istringstream header(*first);
        header.exceptions(std::ios::badbit);  // a lack of memory, or the rest of the line would be left out
        std::string word, sampling = "420";
        header >> word;
        while (header >> word) {
            const std::string value = word.substr(1);
            if (word[0] == 'W') size_.width = number(value);
            if (word[0] == 'H') size_.height = number(value);
            if (word[0] == 'F') timing_.rate = value;
            if (word[0] == 'I') timing_.interlacing = value;
            if (word[0] == 'A') timing_.pixelAspect = value;
            if (word[0] == 'C') sampling = value;
        }
        for (const Sampling& s : samplings)
            if (s.tag == sampling) format_ = &formatNamed(s.format);
        if (!format_) throw DataError(source.name() + ": frames of the kind C" + sampling + " are not known here");
        if (size_.width < 1 || size_.height < 1) throw DataError(source.name() + ": the header tells no size");
        bytes_ = fileBytes(*format_, size_);
        if (source.fileSize() >= 0) frameCount_ = source.fileSize() / static_cast<int64_t>(bytes_ + sizeof "FRAME");
    }

    bool next(uint8_t* frame) override {
        if (source_.atEnd()) return false;
        if (source_.peek(5) != "FRAME" || !source_.line(longestLine)) failAt("does not begin where the one before it ends");
        const size_t got = source_.read(frame, bytes_);
        if (got < bytes_) failAt("stops short, with " + std::to_string(got) + " of " + std::to_string(bytes_) + " bytes");
        ++done_;
        return true;
    }

  private:
    size_t bytes_;
};

class Y4mWriter : public Writer {
  public:
    Y4mWriter(Sink& sink, const FrameKind& kind) : sink_(sink), bytes_(fileBytes(kind.format, kind.size)) {
        const Sampling* found = samplings;
        while (found->format != kind.format.name) ++found;
        std::ostringstream header;
        header.exceptions(std::ios::badbit);
        header << magic << " W" << kind.size.width << " H" << kind.size.height << " F" << kind.timing.rate << " I"
               << kind.timing.interlacing << " A" << kind.timing.pixelAspect << " C" << found->tag;
        if (kind.isFullRange) header << " XCOLORRANGE=FULL";
        sink.write(header.str() + '\n');
    }

    void write(const uint8_t* frame) override {
        sink_.write("FRAME\n");
        sink_.write(frame, bytes_);
    }

  private:
    Sink& sink_;
    size_t bytes_;
};

}  // namespace

const FileKind y4mFiles{
    "y4m",
    {".y4m"},
    {"yuv420p", "yuv422p", "yuv444p", "yuv411p", "yuv410p", "yuva444p", "gray"},
    true,
    [](std::string_view begin) { return begin.starts_with(magic); },
    [](Source& source) -> std::unique_ptr<Reader> { return std::make_unique<Y4mReader>(source); },
    [](Sink& sink, const FrameKind& kind) -> std::unique_ptr<Writer> { return std::make_unique<Y4mWriter>(sink, kind); }};

}  // namespace tool
