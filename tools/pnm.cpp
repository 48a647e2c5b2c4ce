// The binary files of the netpbm family: PBM, PGM and PPM, of 8 or 16 bits, and PFM of floats, from the bottom row upward.
#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>

#include "tools/errors.h"
#include "tools/files.h"
#include "tools/frame.h"

namespace tool {

namespace {

constexpr size_t longestHeader = 4096;

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool isPnm(std::string_view begin) {
    return begin.size() > 2 && begin[0] == 'P' && begin[1] >= '1' && begin[1] <= '6' && isSpace(begin[2]);
}
bool isPfm(std::string_view begin) {
    return begin.size() > 2 && begin[0] == 'P' && (begin[1] == 'F' || begin[1] == 'f') && isSpace(begin[2]);
}

int numberIn(const std::string& text) {  // 0 of what is none
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? value : 0;
}

// Reverses the bytes of each sample.
void swapBytes(uint8_t* samples, size_t bytes, size_t sampleBytes) {
    for (size_t i = 0; i + sampleBytes <= bytes; i += sampleBytes) std::reverse(samples + i, samples + i + sampleBytes);
}

void invert(uint8_t* bytes, size_t count) {
    for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<uint8_t>(~bytes[i]);
}

struct Header {
    std::string magic, scale;  // the largest value, or a float whose sign tells the order of bytes
    Size size;
};

class PnmReader : public Reader {
  public:
    explicit PnmReader(Source& source) : Reader(source) {
        header_ = readHeader();
        setSize(header_.size);
        format_ = &formatNamed(formatOf(header_));
        bytes_ = fileBytes(*format_, size_);
        isPending_ = true;
    }

    bool next(uint8_t* frame) override {
        if (!isPending_) {
            if (!follows([](std::string_view begin) { return isPnm(begin) || isPfm(begin); })) return false;
            const Header header = readHeader();
            if (header.size != size_ || formatOf(header) != format_->name) refuseAt("is not of the size and kind of the first");
            header_ = header;
        }
        isPending_ = false;
        const size_t got = source_.read(frame, bytes_);
        if (got < bytes_) failAt("stops short, with " + std::to_string(got) + " of " + std::to_string(bytes_) + " bytes");
        if (header_.magic == "P4") invert(frame, bytes_);
        if (format_->element == Element::u16) swapBytes(frame, bytes_, 2);
        if (format_->element == Element::f32) turnFloats(frame);
        ++done_;
        return true;
    }

  private:
    std::string word() {
        std::string text;
        while (true) {
            const std::string_view next = source_.peek(1);
            if (next.empty() || text.size() > longestHeader) failAt("has a header that can't be read");
            const char c = next[0];
            source_.take(1);
            if (c == '#' && text.empty())
                source_.line(longestHeader);
            else if (!isSpace(c))
                text += c;
            else if (!text.empty())
                return text;  // one character of space ends a header
        }
    }

    int number() {
        const std::string text = word();
        const int value = numberIn(text);
        if (value < 1) failAt("has " + text + " where a size belongs");
        return value;
    }

    Header readHeader() {
        Header header{.magic = word(), .scale = {}, .size = {}};
        if (header.magic >= "P1" && header.magic <= "P3")
            refuseAt("is of the kind " + header.magic + ", of numbers in words; P4, P5, P6, Pf and PF can be read");
        header.size = {number(), number()};
        if (header.magic != "P4") header.scale = word();
        return header;
    }

    std::string_view formatOf(const Header& h) const {
        if (h.magic == "P4") return "monob";
        if (h.magic == "Pf") return "grayf32le";
        if (h.magic == "PF") return "rgbf32le";
        const bool isGray = h.magic == "P5";
        if (!isGray && h.magic != "P6") failAt("is of the kind " + h.magic + "; P4, P5, P6, Pf and PF can be read");
        if (h.scale == "255") return isGray ? "gray" : "rgb24";
        if (h.scale == "65535") return isGray ? "gray16le" : "rgb48le";
        const std::string text = "has samples up to " + h.scale + "; 255 and 65535 can be read";
        if (numberIn(h.scale) > 0 && numberIn(h.scale) < 65536) refuseAt(text);
        failAt(text);
    }

    void turnFloats(uint8_t* frame) const {
        if (!header_.scale.starts_with('-')) swapBytes(frame, bytes_, 4);
        const size_t row = bytes_ / static_cast<size_t>(size_.height);
        for (int top = 0, bottom = size_.height - 1; top < bottom; ++top, --bottom)
            std::swap_ranges(frame + row * static_cast<size_t>(top), frame + row * static_cast<size_t>(top + 1),
                             frame + row * static_cast<size_t>(bottom));
    }

    Header header_;
    size_t bytes_;
    bool isPending_;  // the first header has been read, and its frame not
};

class PnmWriter : public Writer {
  public:
    PnmWriter(Sink& sink, const FrameKind& kind)
        : sink_(sink),
          format_(kind.format),
          rows_(static_cast<size_t>(kind.size.height)),
          frame_(fileBytes(kind.format, kind.size)) {
        const std::string size = std::to_string(kind.size.width) + ' ' + std::to_string(kind.size.height) + '\n';
        const bool isColour = format_.model == Model::rgb;
        switch (format_.element) {
            case Element::u1:
                header_ = "P4\n" + size;
                break;
            case Element::f32:
                header_ = (isColour ? "PF\n" : "Pf\n") + size + "-1.0\n";
                break;
            default:
                header_ = (isColour ? "P6\n" : "P5\n") + size + (format_.element == Element::u8 ? "255\n" : "65535\n");
        }
    }

    void write(const uint8_t* frame) override {
        sink_.write(header_);
        std::copy(frame, frame + frame_.size(), frame_.begin());
        if (format_.element == Element::u1) invert(frame_.data(), frame_.size());
        if (format_.element == Element::u16) swapBytes(frame_.data(), frame_.size(), 2);
        const size_t row = frame_.size() / rows_;
        if (format_.element == Element::f32)
            for (size_t y = 0; y < rows_; ++y) std::memcpy(frame_.data() + y * row, frame + (rows_ - 1 - y) * row, row);
        sink_.write(frame_.data(), frame_.size());
    }

  private:
    Sink& sink_;
    const Format& format_;
    size_t rows_;
    std::vector<uint8_t> frame_;
    std::string header_;
};

std::unique_ptr<Reader> readPnm(Source& source) { return std::make_unique<PnmReader>(source); }
std::unique_ptr<Writer> writePnm(Sink& sink, const FrameKind& kind) { return std::make_unique<PnmWriter>(sink, kind); }

}  // namespace

const FileKind pnmFiles{
    "pnm", {".pnm", ".ppm", ".pgm", ".pbm"}, {"rgb24", "gray", "rgb48le", "gray16le", "monob"}, true, isPnm, readPnm, writePnm};

const FileKind pfmFiles{"pfm", {".pfm"}, {"rgbf32le", "grayf32le"}, true, isPfm, readPnm, writePnm};

}  // namespace tool
