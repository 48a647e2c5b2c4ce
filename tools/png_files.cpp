// PNG pictures, one behind the other in a pipe. Fewer than 8 bits, palettes and transparent colours are expanded.
#include <png.h>

#include <new>

#include "tools/errors.h"
#include "tools/files.h"
#include "tools/frame.h"

namespace tool {

namespace {

// libpng leaves a failed call by longjmp, so no object with a destructor may live between it and setjmp.
[[noreturn]] void leave(png_structp png, png_const_charp message) {
    *static_cast<std::string*>(png_get_error_ptr(png)) = message;
    png_longjmp(png, 1);
}

void ignoreWarning(png_structp, png_const_charp) {}

bool isPng(std::string_view begin) { return begin.starts_with("\x89PNG"); }

class PngReader : public Reader {
  public:
    explicit PngReader(Source& source) : Reader(source) {
        begin();
        format_ = &formatNamed(formatOfPicture());
        setSize(sizeOfPicture());
        isPending_ = true;
    }

    bool next(uint8_t* frame) override {
        if (!isPending_) {
            if (!follows(isPng)) return false;
            begin();
            if ((sizeOfPicture() != size_ || formatOfPicture() != format_->name) && isLeftOut()) return false;
        }
        isPending_ = false;
        rows_.resize(static_cast<size_t>(size_.height));
        const size_t row = fileBytes(*format_, size_) / rows_.size();
        for (size_t y = 0; y < rows_.size(); ++y) rows_[y] = frame + y * row;
        if (!finish()) failAt("cannot be read: " + message_);
        ++done_;
        return true;
    }

  private:
    static void fetch(png_structp png, png_bytep to, size_t count) {
        auto* reader = static_cast<PngReader*>(png_get_io_ptr(png));
        if (reader->source_.read(to, count) < count) png_error(png, "it stops short");
    }

    void begin() {
        png_destroy_read_struct(&png_, &info_, nullptr);
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, &message_, leave, ignoreWarning);
        info_ = png_create_info_struct(png_);
        if (!info_) throw std::bad_alloc();
        if (!start()) failAt("cannot be read: " + message_);
    }

    bool start() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_set_read_fn(png_, this, fetch);
        png_read_info(png_, info_);
        png_set_expand(png_);
        if (png_get_color_type(png_, info_) == PNG_COLOR_TYPE_GRAY_ALPHA) png_set_gray_to_rgb(png_);
        if (png_get_color_type(png_, info_) == PNG_COLOR_TYPE_GRAY && png_get_valid(png_, info_, PNG_INFO_tRNS))
            png_set_gray_to_rgb(png_);
        png_set_swap(png_);
        png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        return true;
    }

    bool finish() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_image(png_, rows_.data());
        png_read_end(png_, nullptr);
        return true;
    }

    Size sizeOfPicture() const {
        return {static_cast<int>(png_get_image_width(png_, info_)), static_cast<int>(png_get_image_height(png_, info_))};
    }

    std::string_view formatOfPicture() const {
        const bool isWide = png_get_bit_depth(png_, info_) == 16;
        switch (png_get_channels(png_, info_)) {
            case 1:
                return isWide ? "gray16le" : "gray";
            case 3:
                return isWide ? "rgb48le" : "rgb24";
            default:
                return isWide ? "rgba64le" : "rgba";
        }
    }

    // Also when the constructor throws.
    struct End {
        PngReader& reader;
        ~End() { png_destroy_read_struct(&reader.png_, &reader.info_, nullptr); }
    };

    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    End end_{*this};
    std::string message_;
    std::vector<png_bytep> rows_;
    bool isPending_;  // the first header has been read, and its picture not
};

class PngWriter : public Writer {
  public:
    PngWriter(Sink& sink, const FrameKind& kind) : sink_(sink), format_(kind.format), size_(kind.size) {}
    ~PngWriter() override { png_destroy_write_struct(&png_, &info_); }

    void write(const uint8_t* frame) override {
        png_destroy_write_struct(&png_, &info_);
        png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, &message_, leave, ignoreWarning);
        info_ = png_create_info_struct(png_);
        if (!info_) throw std::bad_alloc();
        rows_.resize(static_cast<size_t>(size_.height));
        const size_t row = fileBytes(format_, size_) / rows_.size();
        for (size_t y = 0; y < rows_.size(); ++y) rows_[y] = const_cast<png_bytep>(frame) + y * row;
        if (!encode()) throw FileError("cannot write the PNG picture: " + message_);
        sink_.write(encoded_.data(), encoded_.size());
    }

  private:
    static void store(png_structp png, png_bytep from, size_t count) {
        auto& encoded = static_cast<PngWriter*>(png_get_io_ptr(png))->encoded_;
        encoded.insert(encoded.end(), from, from + count);
    }

    bool encode() {
        encoded_.clear();
        if (setjmp(png_jmpbuf(png_))) return false;
        png_set_write_fn(png_, this, store, [](png_structp) {});
        const bool isColour = format_.model == Model::rgb;
        const int bits = format_.bits;
        png_set_IHDR(png_, info_, static_cast<png_uint_32>(size_.width), static_cast<png_uint_32>(size_.height), bits,
                     !isColour           ? PNG_COLOR_TYPE_GRAY
                     : hasAlpha(format_) ? PNG_COLOR_TYPE_RGB_ALPHA
                                         : PNG_COLOR_TYPE_RGB,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png_, info_);
        if (bits == 16) png_set_swap(png_);
        png_write_image(png_, rows_.data());
        png_write_end(png_, nullptr);
        return true;
    }

    Sink& sink_;
    const Format& format_;
    Size size_;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    std::string message_;
    std::vector<png_bytep> rows_;
    std::vector<uint8_t> encoded_;
};

}  // namespace

const FileKind pngFiles{
    "png",
    {".png"},
    {"rgb24", "rgba", "gray", "rgb48le", "rgba64le", "gray16le", "monob"},
    false,
    isPng,
    [](Source& source) -> std::unique_ptr<Reader> { return std::make_unique<PngReader>(source); },
    [](Sink& sink, const FrameKind& kind) -> std::unique_ptr<Writer> { return std::make_unique<PngWriter>(sink, kind); }};

}  // namespace tool
