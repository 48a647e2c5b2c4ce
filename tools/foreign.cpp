#include "tools/foreign.h"

#include <iterator>
#include <regex>

#include "tools/formats.h"

namespace tool {

namespace {

struct Name {
    const char *pattern, *meaning;  // with $1 and so on for what stands in brackets
};

// Names without the order of bytes.
constexpr Name names[] = {
    {"yuv4([24])([024])p(9|1[0246])(msb)?", "planes of luma and chroma, 4:$1:$2, $3 bits"},
    {"yuva4([24])([024])p(9|1[026])", "planes of luma, chroma and alpha, 4:$1:$2, $3 bits"},
    {"nv20", "a plane of luma and one of chroma pairs, 4:2:2, 10 bits"},
    {"p([024])(1[026])", "a plane of luma and one of chroma pairs, $2 bits at the upper end of 16-bit words"},
    {"gbrp(9|1[0246])(msb)?", "planes of G, B and R, $1 bits"},
    {"gbrap(1[0246]|32)", "planes of G, B, R and alpha, $1 bits"},
    {"gbra?pf(16|32)", "planes of G, B and R, floats of $1 bits"},
    {"gray(9|1[0246]|32)", "gray, $1 bits"},
    {"grayf(16|32)", "gray, floats of $1 bits"},
    {"ya(8|16)", "gray and alpha, $1 bits"},
    {"yaf(16|32)", "gray and alpha, floats of $1 bits"},
    {"y2(1[026])", "packed luma and chroma, 4:2:2, $1 bits at the upper end of 16-bit words"},
    {"uyyvyy411", "packed luma and chroma, 4:1:1, 8 bits"},
    {"ayuv64", "packed alpha, luma and chroma, 16 bits"},
    {"xv30|v30x", "packed luma and chroma, 4:4:4, 10 bits"},
    {"xv36", "packed luma and chroma, 4:4:4, 12 bits"},
    {"xv48", "packed luma and chroma, 4:4:4, 16 bits"},
    {"(rgb|bgr)48|(rgba|bgra)64", "packed $1$2, 16 bits"},
    {"rgb96|rgba128", "packed R, G and B, 32 bits"},
    {"rgba?f(16|32)", "packed R, G and B, floats of $1 bits"},
    {"x2(rgb|bgr)10", "$1 packed into words of 32 bits, 10 bits"},
    {"(rgb|bgr)(444|555|565)", "$1 packed into words of 16 bits, $2"},
    {"(rgb|bgr)(4|8|4_byte)", "$1 packed into $2 bits"},
    {"bayer_(bggr|rggb|gbrg|grbg)16", "the mosaic of a sensor, 16 bits"},
    {"xyz12", "packed XYZ, 12 bits at the upper end of 16-bit words"},
    {"pal8", "8-bit numbers of colours in a palette"},
    {"monow", "black and white, a bit a pixel, of which 0 is white"},
    {"vaapi|dxva2_vld|vdpau|qsv|mmal|d3d11(va_vld)?|d3d12|cuda|xvmc|videotoolbox_vld|mediacodec|drm_prime|opencl|vulkan",
     "frames in the memory of another device"},
};

struct Signature {
    size_t offset;
    std::string_view bytes;
    const char* what;
    bool isFilm = false;
};

using namespace std::string_view_literals;
constexpr Signature signatures[] = {
    {0, "II*\0"sv, "TIFF or a camera's raw file"},
    {0, "MM\0*"sv, "TIFF or a camera's raw file"},
    {8, "WEBP", "WebP"},
    {0, "GIF8", "GIF"},
    {0, "BM", "BMP"},
    {4, "ftypavif", "AVIF"},
    {4, "ftyphei", "HEIF"},
    {4, "ftypmif1", "HEIF"},
    {4, "ftypcrx", "a camera's raw file"},
    {0, "\xff\x0a", "JPEG XL"},
    {4, "JXL ", "JPEG XL"},
    {4, "jP  ", "JPEG 2000"},
    {0, "\xff\x4f\xff\x51", "JPEG 2000"},
    {0, "8BPS", "PSD"},
    {0, "v/1\x01", "OpenEXR"},
    {0, "qoif", "QOI"},
    {0, "farbfeld", "farbfeld"},
    {0, "#?RADIANCE", "Radiance HDR"},
    {0, "SDPX", "DPX"},
    {0, "XPDS", "DPX"},
    {0, "%PDF", "PDF"},
    {0, "P7\n", "PAM"},
    {4, "ftyp", "MP4 or MOV", true},
    {0, "\x1a\x45\xdf\xa3", "Matroska or WebM", true},
    {8, "AVI ", "AVI", true},
    {0, "DKIF", "IVF", true},
    {0, "OggS", "Ogg", true},
    {0, "FLV\x01", "FLV", true},
    {0, "\0\0\x01\xba"sv, "MPEG", true},
    {0, "\0\0\0\x01"sv, "a stream of H.264 or HEVC", true},
};

std::optional<std::string> meaningInOrder(const std::string& name) {
    for (const Name& known : names) {
        std::smatch found;
        if (std::regex_match(name, found, std::regex(known.pattern))) return found.format(known.meaning);
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> meaningOf(std::string_view name) {
    if (!name.ends_with("le") && !name.ends_with("be")) return meaningInOrder(std::string(name));
    const std::string stem(name.substr(0, name.size() - 2));
    auto meaning = meaningInOrder(stem);
    if (!meaning || name.ends_with("le")) return meaning;
    const Format* turned = findFormat(stem + "le");
    return *meaning + ", big-endian" + (turned ? "; " + std::string(turned->name) + " is the same with its bytes exchanged" : "");
}

std::optional<std::string> foreignFile(std::string_view begin) {
    for (const Signature& s : signatures)
        if (begin.size() > s.offset && begin.substr(s.offset).starts_with(s.bytes))
            return std::string(s.what) + (s.isFilm
                                              ? "; decode it first, as by ffmpeg -i FILE -f yuv4mpegpipe - | zelcc convert - ..."
                                              : "; make a PNG file of it first, as by ffmpeg -i FILE picture.png");
    return std::nullopt;
}

}  // namespace tool
