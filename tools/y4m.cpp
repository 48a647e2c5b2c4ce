// Y4M: a line of text, then frames of planes, each behind a line of its own.
#include <algorithm>
#include <charconv>
#include <sstream>

#include "tools/errors.h"
#include "tools/files.h"
#include "tools/foreign.h"
#include "tools/frame.h"

namespace tool {

namespace {

constexpr size_t longestLine = 4096;
constexpr std::string_view magic = "YUV4MPEG2";
// Tags of FFmpeg, and one of this program: a matrix by the name that it has here.
constexpr std::string_view otherSamplingTag = "XYSCSS=", fullRange = "XCOLORRANGE=FULL", limitedRange = "XCOLORRANGE=LIMITED",
                           matrixTag = "XZELCC_MATRIX=";

struct Sampling {
    std::string_view tag, format;
    Location location = {};
};
// The tags of 4:2:0 differ in where chroma lies.
constexpr Sampling samplings[] = {{"420", "yuv420p"},
                                  {"420jpeg", "yuv420p", {Place::centre, Place::centre}},
                                  {"420mpeg2", "yuv420p", {Place::first, Place::centre}},
                                  {"420paldv", "yuv420p", {Place::first, Place::first}},
                                  {"422", "yuv422p"},
                                  {"444", "yuv444p"},
                                  {"411", "yuv411p"},
                                  {"410", "yuv410p"},
                                  {"444alpha", "yuva444p"},
                                  {"mono", "gray"}};

// Of more than 8 bits, as C420p10 and Cmono16. Their bytes have the order of this processor.
const Format* deepFormat(const std::string& tag) {
    const std::string name = tag.starts_with("mono") ? "gray" + tag.substr(4) : "yuv" + tag;
    const Format* const found = findFormat(name + "le");
    return found && std::ranges::find(y4mFiles.formats, found->name) != y4mFiles.formats.end() ? found : nullptr;
}

std::string deepTag(std::string_view name) {
    name.remove_suffix(2);
    return name.starts_with("gray") ? "mono" + std::string(name.substr(4)) : std::string(name.substr(3));
}

int number(const std::string& text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : 0;
}

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

class Y4mReader : public Reader {
  public:
    explicit Y4mReader(Source& source) : Reader(source) {
        const auto first = source.line(longestLine);
        if (!first) throw DataError(source.name() + ": the header line has no end");
        std::istringstream header(*first);
        header.exceptions(std::ios::badbit);  // a lack of memory, or the rest of the line would be left out
        std::string word, sampling, otherSampling = "420";
        Size size;
        header >> word;
        while (header >> word) {
            const std::string value = word.substr(1);
            if (word[0] == 'W') size.width = number(value);
            if (word[0] == 'H') size.height = number(value);
            if (word[0] == 'F') timing_.rate = value;
            if (word[0] == 'I') timing_.interlacing = value;
            if (word[0] == 'A') timing_.pixelAspect = value;
            if (word[0] == 'C') sampling = value;
            if (word.starts_with(otherSamplingTag)) otherSampling = lowerCase(word.substr(otherSamplingTag.size()));
            if (word == fullRange) colour_.isFullRange = true;
            if (word == limitedRange) colour_.isFullRange = false;
            if (word.starts_with(matrixTag)) colour_.matrix = word.substr(matrixTag.size());
        }
        setSampling(sampling.empty() ? otherSampling : sampling);
        if (size.width < 1 || size.height < 1) throw DataError(source.name() + ": the header tells no size");
        setSize(size);
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
    void setSampling(const std::string& tag) {
        for (const Sampling& s : samplings) {
            if (s.tag != tag) continue;
            format_ = &formatNamed(s.format);
            colour_.location = s.location;
            return;
        }
        format_ = deepFormat(tag);
        if (format_) return;
        const std::string kind = source_.name() + ": frames are of the kind C" + tag;
        if (const auto meaning = meaningOf((tag.starts_with("mono") ? "gray" + tag.substr(4) : "yuv" + tag)))
            throw UnsupportedError(kind + ", " + *meaning + ", which no reader takes; FFmpeg makes 8 bits of it by -pix_fmt");
        throw DataError(kind + ", which is not known here");
    }

    size_t bytes_;
};

class Y4mWriter : public Writer {
  public:
    Y4mWriter(Sink& sink, const FrameKind& kind) : sink_(sink), bytes_(fileBytes(kind.format, kind.size)) {
        const Sampling* found = nullptr;
        for (const Sampling& s : samplings)
            if (s.format == kind.format.name && (!found || s.location == kind.colour.location)) found = &s;
        std::ostringstream header;
        header.exceptions(std::ios::badbit);
        header << magic << " W" << kind.size.width << " H" << kind.size.height << " F" << kind.timing.rate << " I"
               << kind.timing.interlacing << " A" << kind.timing.pixelAspect << " C"
               << (found ? std::string(found->tag) : deepTag(kind.format.name));
        if (const auto isFull = kind.colour.isFullRange) header << ' ' << (*isFull ? fullRange : limitedRange);
        if (!kind.colour.matrix.empty()) header << ' ' << matrixTag << kind.colour.matrix;
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
    {"yuv420p",     "yuv422p",     "yuv444p",     "yuv411p",     "yuv410p",     "yuva444p",    "gray",
     "yuv420p9le",  "yuv420p10le", "yuv420p12le", "yuv420p14le", "yuv420p16le", "yuv422p9le",  "yuv422p10le",
     "yuv422p12le", "yuv422p14le", "yuv422p16le", "yuv444p9le",  "yuv444p10le", "yuv444p12le", "yuv444p14le",
     "yuv444p16le", "gray9le",     "gray10le",    "gray12le",    "gray16le"},
    true,
    [](std::string_view begin) { return begin.starts_with(magic); },
    [](Source& source) -> std::unique_ptr<Reader> { return std::make_unique<Y4mReader>(source); },
    [](Sink& sink, const FrameKind& kind) -> std::unique_ptr<Writer> { return std::make_unique<Y4mWriter>(sink, kind); }};

}  // namespace tool
