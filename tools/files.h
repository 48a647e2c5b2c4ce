// Files of pictures: a reader and a writer for each kind.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/bytes.h"
#include "tools/colour.h"
#include "tools/formats.h"
#include "tools/geometry.h"

namespace tool {

// What a file says of the frames in it beside their format.
struct Timing {
    std::string rate = "25:1", pixelAspect = "1:1", interlacing = "p";  // as in a Y4M header
};

class Reader {
  public:
    virtual ~Reader() = default;
    const Format& format() const { return *format_; }
    Size size() const { return size_; }
    const Timing& timing() const { return timing_; }
    const Colour& colour() const { return colour_; }
    int64_t frameCount() const { return frameCount_; }  // -1 if it isn't known
    // Reads the next frame, laid out as a raw file has it; false behind the last. A frame that stops short is a DataError.
    virtual bool next(uint8_t* frame) = 0;
    void stop() { source_.stop(); }  // from another thread: no more bytes are waited for
    // What the file has and the frames have not, as the end of a sentence; empty if that is nothing.
    const std::string& leftOut() const { return leftOut_; }

  protected:
    explicit Reader(Source& source) : source_(source) {}
    void setSize(Size size);                                    // throws an UnsupportedError if it is too large
    [[noreturn]] void failAt(const std::string& what) const;    // names the frame that comes next
    [[noreturn]] void refuseAt(const std::string& what) const;  // likewise, of data that are well formed

    // Whether another picture follows, by how it begins. NULs and blanks behind a picture are none, and other bytes behind the
    // only one are left out.
    bool follows(bool (*isContent)(std::string_view begin));
    // In a file and not in a pipe: what lies behind may belong to it.
    bool isOnePicture() const { return done_ == 1 && source_.fileSize() >= 0; }
    // To a picture of another size or kind than the first: true if it lies behind the only one of a file, as previews do.
    bool isLeftOut();
    void leaveOut(const std::string& what) { leftOut_ = what; }

    Source& source_;
    const Format* format_ = nullptr;
    Size size_;
    Timing timing_;
    Colour colour_;
    int64_t frameCount_ = -1, done_ = 0;

  private:
    std::string leftOut_;
};

struct FrameKind {
    const Format& format;
    Size size;
    Timing timing;
    Colour colour = {};
};

class Writer {
  public:
    virtual ~Writer() = default;
    virtual void write(const uint8_t* frame) = 0;
};

struct FileKind {
    std::string_view name;
    std::vector<std::string_view> endings;  // of file names
    std::vector<std::string_view> formats;  // that it can hold, the usual one first; of raw files none stands here
    bool holdsMany;                         // frames, in a plain file
    bool (*isContent)(std::string_view begin);
    std::unique_ptr<Reader> (*read)(Source&);
    std::unique_ptr<Writer> (*write)(Sink&, const FrameKind&);
};

// As many first bytes as tell any kind.
constexpr size_t longestMagic = 16;

// All but raw files.
const std::vector<FileKind>& fileKinds();
const FileKind* kindNamed(std::string_view name);   // "raw" and "auto" are none
const FileKind* kindByName(std::string_view path);  // by what the name ends with
const FileKind* kindByContent(std::string_view begin);

std::unique_ptr<Reader> rawReader(Source& source, const Format& format, Size size);
std::unique_ptr<Writer> rawWriter(Sink& sink, const FrameKind& kind);

// The kinds, each in its own file.
extern const FileKind y4mFiles, pngFiles, jpegFiles, pnmFiles, pfmFiles;

}  // namespace tool
