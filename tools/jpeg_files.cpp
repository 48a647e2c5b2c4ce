// JPEG pictures, one behind the other in a pipe, as MJPEG has them.
#include "tools/jpeg_files.h"

#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <csetjmp>
#include <new>

#include "tools/errors.h"
#include "tools/frame.h"

namespace tool {

namespace {

constexpr int quality = 92;
constexpr size_t leastRoom = 1 << 16;  // for a picture that is written
constexpr std::string_view attachment("MPF\0", 4);

bool isJpeg(std::string_view begin) { return begin.starts_with("\xff\xd8\xff"); }

// libjpeg leaves a failed call by the error handler, from which longjmp leads back: no object with a destructor in between.
struct Failure {
    jpeg_error_mgr manager;
    std::jmp_buf jump;
    char message[JMSG_LENGTH_MAX];
};

[[noreturn]] void leave(j_common_ptr codec) {
    auto* failure = reinterpret_cast<Failure*>(codec->err);
    codec->err->format_message(codec, failure->message);
    std::longjmp(failure->jump, 1);
}

// Nearly all warnings tell of a picture that is damaged: of samples that are made up. These don't.
bool isHarmless(int warning) { return warning == JWRN_ADOBE_XFORM || warning == JWRN_BOGUS_ICC || warning == JWRN_JFIF_MAJOR; }

void heed(j_common_ptr codec, int level) {
    if (level < 0 && !isHarmless(codec->err->msg_code)) leave(codec);
}

jpeg_error_mgr* handler(Failure& failure) {
    jpeg_std_error(&failure.manager);
    failure.manager.error_exit = leave;
    failure.manager.emit_message = heed;
    failure.manager.output_message = [](j_common_ptr) {};
    return &failure.manager;
}

class JpegReader : public Reader {
  public:
    explicit JpegReader(Source& source) : Reader(source) {
        codec_.err = handler(failure_);
        if (!create()) throw std::bad_alloc();
        bytes_.init_source = [](j_decompress_ptr) {};
        bytes_.fill_input_buffer = fill;
        bytes_.skip_input_data = skip;
        bytes_.resync_to_restart = jpeg_resync_to_restart;
        bytes_.term_source = [](j_decompress_ptr) {};
        codec_.src = &bytes_;
        codec_.client_data = this;
        begin();
        format_ = codec_.num_components == 1 ? &formatNamed("gray") : &formatNamed("rgb24");
        setSize({static_cast<int>(codec_.image_width), static_cast<int>(codec_.image_height)});
        isPending_ = true;
    }

    bool next(uint8_t* frame) override {
        if (!isPending_) {
            if (!follows(isJpeg)) return false;
            if (hasAttached_ && isOnePicture()) {
                leaveOut("the pictures that belong to the first");
                return false;
            }
            begin();
            const bool isGray = codec_.num_components == 1;
            if ((static_cast<int>(codec_.image_width) != size_.width || static_cast<int>(codec_.image_height) != size_.height ||
                 isGray != (format_->name == "gray")) &&
                isLeftOut())
                return false;
        }
        isPending_ = false;
        const bool isRead = decode(frame);
        giveBack();
        if (!isRead) leaveOff();
        ++done_;
        return true;
    }

  private:
    static boolean fill(j_decompress_ptr codec) {
        auto* reader = static_cast<JpegReader*>(codec->client_data);
        reader->source_.take(reader->lent_);
        const auto bytes = reader->source_.available();
        reader->lent_ = bytes.size();
        if (bytes.empty()) ERREXIT(codec, JERR_INPUT_EOF);
        codec->src->next_input_byte = bytes.data();
        codec->src->bytes_in_buffer = bytes.size();
        return TRUE;
    }

    static void skip(j_decompress_ptr codec, long count) {
        while (count > static_cast<long>(codec->src->bytes_in_buffer)) {
            count -= static_cast<long>(codec->src->bytes_in_buffer);
            fill(codec);
        }
        if (count < 1) return;
        codec->src->next_input_byte += count;
        codec->src->bytes_in_buffer -= static_cast<size_t>(count);
    }

    // What the codec has not used belongs to the next picture.
    void giveBack() {
        source_.take(lent_ - bytes_.bytes_in_buffer);
        lent_ = bytes_.bytes_in_buffer = 0;
    }

    bool create() {
        if (setjmp(failure_.jump)) return false;
        jpeg_create_decompress(&codec_);
        return true;
    }

    void begin() {
        if (!start()) leaveOff();
        hasAttached_ = listsOthers();
        if (codec_.jpeg_color_space == JCS_CMYK || codec_.jpeg_color_space == JCS_YCCK)
            refuseAt("is in CMYK, the inks of a printer, which no function takes; make RGB of it first");
        if (codec_.num_components != 1 && codec_.num_components != 3)
            refuseAt("has " + std::to_string(codec_.num_components) + " components; one and three can be read");
    }

    [[noreturn]] void leaveOff() const {
        constexpr int unsupported[] = {JERR_ARITH_NOTIMPL, JERR_BAD_PRECISION, JERR_CONVERSION_NOTIMPL, JERR_NOT_COMPILED,
                                       JERR_SOF_UNSUPPORTED};
        const std::string text = std::string("cannot be read: ") + failure_.message;
        if (std::ranges::find(unsupported, failure_.manager.msg_code) != std::end(unsupported)) refuseAt(text);
        failAt(text);
    }

    bool listsOthers() const {
        for (jpeg_saved_marker_ptr m = codec_.marker_list; m; m = m->next)
            if (std::string_view(reinterpret_cast<const char*>(m->data), m->data_length).starts_with(attachment)) return true;
        return false;
    }

    bool start() {
        if (setjmp(failure_.jump)) return false;
        jpeg_save_markers(&codec_, JPEG_APP0 + 2, static_cast<unsigned>(attachment.size()));
        jpeg_read_header(&codec_, TRUE);
        codec_.out_color_space = codec_.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
        return true;
    }

    bool decode(uint8_t* frame) {
        if (setjmp(failure_.jump)) return false;
        jpeg_start_decompress(&codec_);
        const size_t row = static_cast<size_t>(codec_.output_width) * static_cast<size_t>(codec_.output_components);
        while (codec_.output_scanline < codec_.output_height) {
            JSAMPROW line = frame + codec_.output_scanline * row;
            jpeg_read_scanlines(&codec_, &line, 1);
        }
        jpeg_finish_decompress(&codec_);
        return true;
    }

    // Also when the constructor throws.
    struct End {
        JpegReader& reader;
        ~End() { jpeg_destroy_decompress(&reader.codec_); }
    };

    Failure failure_;
    jpeg_decompress_struct codec_{};
    End end_{*this};
    jpeg_source_mgr bytes_{};
    size_t lent_ = 0;
    bool hasAttached_ = false;  // previews, maps of brightness, another eye's view: a segment of the picture lists them
    bool isPending_;            // the first header has been read, and its picture not
};

class JpegWriter : public Writer {
  public:
    JpegWriter(Sink& sink, const FrameKind& kind) : sink_(sink), format_(kind.format), size_(kind.size) {
        bytes_.init_destination = [](j_compress_ptr codec) { lend(codec, 0); };
        bytes_.empty_output_buffer = [](j_compress_ptr codec) -> boolean {
            lend(codec, of(codec).encoded_.size());
            return TRUE;
        };
        bytes_.term_destination = [](j_compress_ptr) {};
    }

    void write(const uint8_t* frame) override {
        const bool isWritten = encode(frame);
        jpeg_destroy_compress(&codec_);
        if (!isWritten && failure_.manager.msg_code == JERR_OUT_OF_MEMORY) throw std::bad_alloc();
        if (!isWritten) throw FileError(std::string("cannot write the JPEG picture: ") + failure_.message);
        sink_.write(encoded_.data(), encoded_.size() - bytes_.free_in_buffer);
    }

  private:
    static JpegWriter& of(j_compress_ptr codec) { return *static_cast<JpegWriter*>(codec->client_data); }

    // Room behind the bytes that are there: as much again. It is kept for the next picture.
    static void lend(j_compress_ptr codec, size_t used) {
        std::vector<uint8_t>& encoded = of(codec).encoded_;
        if (!hasRoom(encoded, std::max(2 * used, leastRoom))) ERREXIT1(codec, JERR_OUT_OF_MEMORY, 0);
        codec->dest->next_output_byte = encoded.data() + used;
        codec->dest->free_in_buffer = encoded.size() - used;
    }

    static bool hasRoom(std::vector<uint8_t>& encoded, size_t size) {
        try {
            encoded.resize(std::max(encoded.size(), size));
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    bool encode(const uint8_t* frame) {
        codec_.err = handler(failure_);
        if (setjmp(failure_.jump)) return false;
        jpeg_create_compress(&codec_);
        codec_.dest = &bytes_;
        codec_.client_data = this;
        const bool isGray = format_.model == Model::gray;
        codec_.image_width = static_cast<JDIMENSION>(size_.width);
        codec_.image_height = static_cast<JDIMENSION>(size_.height);
        codec_.input_components = isGray ? 1 : 3;
        codec_.in_color_space = isGray ? JCS_GRAYSCALE : JCS_RGB;
        jpeg_set_defaults(&codec_);
        jpeg_set_quality(&codec_, quality, TRUE);
        jpeg_start_compress(&codec_, TRUE);
        const size_t row = static_cast<size_t>(size_.width) * static_cast<size_t>(codec_.input_components);
        while (codec_.next_scanline < codec_.image_height) {
            auto* line = const_cast<JSAMPROW>(frame + codec_.next_scanline * row);
            jpeg_write_scanlines(&codec_, &line, 1);
        }
        jpeg_finish_compress(&codec_);
        return true;
    }

    Sink& sink_;
    const Format& format_;
    Size size_;
    Failure failure_;
    jpeg_compress_struct codec_{};
    jpeg_destination_mgr bytes_{};
    std::vector<uint8_t> encoded_;
};

}  // namespace

const FileKind jpegFiles{
    "jpeg",
    {".jpg", ".jpeg", ".mjpeg", ".mjpg"},
    {"rgb24", "gray"},
    false,
    isJpeg,
    [](Source& source) -> std::unique_ptr<Reader> { return std::make_unique<JpegReader>(source); },
    [](Sink& sink, const FrameKind& kind) -> std::unique_ptr<Writer> { return std::make_unique<JpegWriter>(sink, kind); }};

}  // namespace tool
