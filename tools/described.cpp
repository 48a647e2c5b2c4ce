// Conversions of libzelvideo as subjects of published checksums.
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <stdexcept>

#include "catalog/colours.h"
#include "tools/checksums.h"

namespace tool {

namespace {

// From a format, by what its samples mean, to another, with options of zelvideo.h. Every format that can be described is once
// on either side; what follows them is asked for most and has ways of its own.
constexpr const char* described[] = {
    "0bgr:bgr24",
    "0rgb:rgba,limited",
    "abgr:yuva32,2020,limited",
    "argb:gbrpf32le",
    "ayuv,709,full:y210le,fcc,limited,topleft",
    "ayuv64le,240m,full:yuyv422,2020,full,left",
    "bgr0:p012le,601,full,center:sited",
    "bgr24:yuv422p16le,ycgco,limited,topleft:sited",
    "bgr48le:bgraf32le",
    "bgra:uyva,709,limited",
    "bgra64le:yuva420p9le,240m,full,center:sited,ordered",
    "bgraf32le:gray14le,709,full",
    "bgrf32le:yuv411p,2020,limited,left:ordered",
    "gbrap:0bgr,limited",
    "gbrap10le,limited:p216le,fcc,limited,center:sited",
    "gbrap12le,limited:yuv440p12le,2020,full,topleft:sited",
    "gbrp:gbrap12le",
    "gbrp10le:vuyx,601,full:ordered",
    "gbrp12le:yuva422p16le,ycgco,limited,center:sited",
    "gbrp14le:nv12,709,limited,topleft:sited",
    "gbrp16le:yuv420p14le,240m,full,left",
    "gbrp9le:ayuv,709,full:ordered",
    "gbrpf32le:rgb0,limited",
    "gray,709,limited:yuv444p14le,2020,limited",
    "gray10le,2020,limited:gbrp14le:ordered",
    "gray12le,fcc,full:xv30le,fcc,limited",
    "gray14le,2020,full:yuva444p12le,2020,full",
    "gray16le,601,limited:nv24,601,full:ordered",
    "gray9le,ycgco,limited:yuv422p10le,ycgco,limited,left",
    "nv11,709,full,topleft:bgr48le,limited:linear",
    "nv12,240m,full,left:rgba64le",
    "nv16,709,limited,center:yuva420p,709,limited,center:linear,sited,ordered",
    "nv20le,2020,limited,topleft:gray,240m,full",
    "nv21,fcc,full,left:y212le,709,full,left:linear",
    "nv24,2020,full:yv12,2020,limited,center:sited",
    "nv42,601,limited:p016le,fcc,limited,topleft:sited",
    "p010le,ycgco,limited,left:yuv422p9le,2020,full,left:ordered",
    "p012le,709,full,center:bgrf32le:linear",
    "p016le,240m,full,topleft:uyvy422,601,full,center:sited,ordered",
    "p210le,709,limited,left:yuva422p,ycgco,limited,topleft:linear,sited,ordered",
    "p212le,2020,limited,center:gray16le,709,limited",
    "p216le,fcc,full,topleft:yuv420p,240m,full,center:linear",
    "p410le,2020,full:0rgb,limited:ordered",
    "p412le,601,limited:p410le,709,full",
    "p416le,ycgco,limited:yuv444p,2020,limited",
    "rgb0:gbrp,limited:ordered",
    "rgb24:vyu444,fcc,limited",
    "rgb48le:yuva422p9le,2020,full,topleft:sited",
    "rgba:nv16,601,full,left",
    "rgba64le:yuv420p16le,ycgco,limited,center",
    "rgbaf32le:ayuv64le,709,limited",
    "rgbf32le:rgb24:ordered",
    "uyva,709,full:yuv444p16le,240m,full:ordered",
    "uyvy422,240m,full,center:gbrp16le:linear",
    "v210,709,limited,topleft:xv36le,709,full",
    "vuya,2020,limited:yuva444p16le,2020,limited",
    "vuyx,fcc,full:nv42,fcc,limited",
    "vyu444,2020,full:yuv422p12le,2020,full,center",
    "x2bgr10le,limited:bgra,limited",
    "x2rgb10le,limited:rgbaf32le",
    "xv30le,601,limited:yuva420p10le,601,full,topleft",
    "xv36le,ycgco,limited:gray10le,ycgco,limited",
    "xv48le,709,full:y216le,709,limited,center:sited",
    "y210le,240m,full,left:yv16,240m,full,topleft:linear,sited,ordered",
    "y212le,709,limited,center:p210le,709,full,left",
    "y216le,2020,limited,topleft:yuv440p,2020,limited,center:linear",
    "yuv24,fcc,full:gbrap:ordered",
    "yuv411p,2020,full,center:v210,fcc,limited,topleft:linear,sited",
    "yuv420p,601,limited,topleft:yuva422p10le,2020,full,left",
    "yuv420p10le,ycgco,limited,left:gray9le,601,full:linear,ordered",
    "yuv420p12le,709,full,center:yuv420p10le,ycgco,limited,topleft:sited",
    "yuv420p14le,240m,full,topleft:abgr,limited:linear",
    "yuv420p16le,709,limited,left:p412le,709,limited:ordered",
    "yuv420p9le,2020,limited,center:yuv444p10le,240m,full:linear,ordered",
    "yuv422p,fcc,full,topleft:gbrp10le",
    "yuv422p10le,2020,full,left:x2bgr10le:linear",
    "yuv422p12le,601,limited,center:yuva444p,709,full",
    "yuv422p14le,ycgco,limited,topleft:nv20le,2020,limited,left:linear",
    "yuv422p16le,709,full,left:yuv420p9le,fcc,limited,center:sited,ordered",
    "yuv422p9le,240m,full,center:bgr0,limited:linear",
    "yuv440p,709,limited,topleft:rgb48le,limited:ordered",
    "yuv440p10le,2020,limited,left:yuv444p9le,2020,full:linear,ordered",
    "yuv440p12le,fcc,full,center:gbrp9le,limited",
    "yuv444p,2020,full:xv48le,601,full",
    "yuv444p10le,601,limited:yuva444p9le,ycgco,limited:ordered",
    "yuv444p12le,ycgco,limited:p010le,709,limited,topleft",
    "yuv444p14le,709,full:yuv422p14le,240m,full,left:sited",
    "yuv444p16le,240m,full:bgra64le:ordered",
    "yuv444p9le,709,limited:rgbf32le",
    "yuva32,2020,limited:yuva420p16le,709,full,center",
    "yuva420p,fcc,full,left:gray12le,2020,limited",
    "yuva420p10le,2020,full,center:yuv24,fcc,limited:linear",
    "yuva420p16le,601,limited,topleft:yvyu422,2020,full,center",
    "yuva420p9le,ycgco,limited,left:p212le,601,full,topleft:linear",
    "yuva422p,709,full,center:yuv440p10le,ycgco,limited,left:sited,ordered",
    "yuva422p10le,240m,full,topleft:gbrap10le:linear",
    "yuva422p12le,709,limited,left:vuya,709,limited:ordered",
    "yuva422p16le,2020,limited,center:yuva422p12le,240m,full,topleft:linear",
    "yuva422p9le,fcc,full,topleft:nv11,709,full,left:sited",
    "yuva444p,2020,full:yuv420p12le,2020,limited,center:sited",
    "yuva444p10le,601,limited:argb,limited",
    "yuva444p12le,ycgco,limited:p416le,fcc,limited:ordered",
    "yuva444p16le,709,full:yuv444p12le,2020,full:ordered",
    "yuva444p9le,240m,full:gbrp12le",
    "yuyv422,709,limited,topleft:x2rgb10le",
    "yv12,2020,limited,left:yuva444p10le,601,full:linear",
    "yv16,fcc,full,center:nv21,ycgco,limited,topleft:sited",
    "yvyu422,2020,full,topleft:yuv422p,709,limited,left:linear,sited",
    "yuv420p,601,full,center:bgra",
    "yuv420p,709,limited,left:bgra",
    "yuv420p,2020,limited,topleft:rgb24:linear",
    "nv12,709,limited,left:bgra:linear",
    "bgra:yuv420p,601,full,center",
    "rgb24:yuv420p,709,limited,left:sited",
    "rgb24:nv12,709,limited,left",
    "yuv420p10le,2020,limited,topleft:x2rgb10le",
    "p010le,2020,limited,left:bgra",
    "p010le,2020,limited,left:rgb48le:linear",
    "p010le,2020,limited,left:x2rgb10le:linear",
    "rgb48le:p010le,2020,limited,left:ordered",
    "x2rgb10le:p010le,2020,limited,topleft:sited",
    "gbrp10le:yuv420p10le,2020,limited,left",
    "p010le,2020,limited,left:nv12,2020,limited,left:ordered",
    "p010le,709,limited,left:yuv420p10le,709,limited,left",
    "yuv420p10le,709,limited,left:yuv420p,709,limited,left",
    "yuv420p,709,limited,left:yuv420p,2020,limited,left",
    "yuv420p,601,full,center:yuv420p,601,limited,left:linear,sited",
    "yuv444p,given,full:rgb24",
    "rgb24:yuv422p,given,limited,center",
    "rgba:bgra",
    "argb:bgra",
    "bgra:rgb24",
    "bgr24:rgb0",
    "nv12,709,limited,left:p010le,709,limited,left",
    "p010le,2020,limited,left:p016le,2020,limited,left",
};

std::vector<std::string> parts(const std::string& text, char separator) {
    std::vector<std::string> found(1);
    for (const char c : text) {
        if (c == separator)
            found.emplace_back();
        else
            found.back() += c;
    }
    return found;
}

ZelvFormat formatOf(const std::vector<std::string>& words) {
    const auto has = [&](const char* word) { return std::ranges::find(words, word) != words.end(); };
    catalog::Colour colour{.isFullRange = !has("limited")};
    for (const std::string& word : words)
        if (catalog::findMatrix(word)) colour.matrix = word;
    if (has("center")) colour.location = zelvCentre;
    if (has("topleft")) colour.location = zelvTopLeft;
    auto format = catalog::describe(formatNamed(words[0]), colour);
    if (!format) throw std::logic_error(words[0] + " has no description");
    if (has("limited")) format->range = zelvLimited;  // of RGB as well
    if (has("given")) {
        format->matrix = zelvMatrixGiven;
        format->kr = 2500;
        format->kb = 900;
    }
    return *format;
}

class Described {
  public:
    explicit Described(const std::string& text) {
        const auto sides = parts(text, ':');
        const auto source = parts(sides[0], ','), target = parts(sides[1], ',');
        const auto options = sides.size() > 2 ? parts(sides[2], ',') : std::vector<std::string>();
        const auto has = [&](const char* word) { return std::ranges::count(options, word) != 0; };
        const ZelvFormat from = formatOf(source), to = formatOf(target);
        const ZelvOptions chosen{has("linear") ? zelvLinear : zelvRepeat, has("sited") ? zelvSited : zelvMean,
                                 has("ordered") ? zelvOrdered : zelvRound};
        if (zelvMakePlan(&plan_, &from, &to, &chosen) != zelStsNoErr) throw std::logic_error("no plan of " + text);
        source_ = &formatNamed(source[0]);
        target_ = &formatNamed(target[0]);
    }

    uint64_t add(uint64_t sum, Size size, Lay lay, unsigned seed) const {
        const Laid source = tool::lay(*source_, size, lay, true), target = tool::lay(*target_, size, lay, true);
        fill(source, seed);
        clear(target);
        const ZelStatus status = zelvConvert(&plan_, source.planes.data.data(), source.planes.steps.data(),
                                             target.planes.data.data(), target.planes.steps.data(), {size.width, size.height});
        return addTo(addBytes(sum, &status, sizeof status), target);
    }

  private:
    ZelvPlan plan_;
    const Format *source_, *target_;
};

}  // namespace

std::vector<Subject> describedSubjects() {
    std::vector<Subject> subjects;
    for (const std::string text : described)
        subjects.push_back({"zelv:" + text, false, [text] {
                                const Described conversion(text);
                                return checksumOf(1, [&](uint64_t sum, Size size, Lay lay, int, unsigned seed) {
                                    return conversion.add(sum, size, lay, seed);
                                });
                            }});
    return subjects;
}

std::vector<Subject> allSubjects() {
    std::vector<Subject> subjects = functionSubjects();
    std::ranges::move(describedSubjects(), std::back_inserter(subjects));
    return subjects;
}

}  // namespace tool
