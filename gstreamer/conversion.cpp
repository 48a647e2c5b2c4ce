#include "conversion.h"

#include <algorithm>

#include "formats.h"
#include "zelcc.h"

namespace zelconvert {
namespace {

// Strips begin at multiples of it: whole sites.
constexpr int32_t stripRows = 16;
// AHD computes some rows beyond its region as well, so that fewer of them would cost more.
constexpr int32_t ahdStripRows = 64;
constexpr int32_t rgbBytes = 3;
// What zeliDemosaicAHD asks for.
constexpr int32_t ahdRows = 30, ahdMargin = 6;

Image imageOf(const GstVideoFrame& frame) {
    Image image;
    for (guint i = 0; i < GST_VIDEO_FRAME_N_PLANES(&frame); ++i) {
        image.planes[i] = static_cast<uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, i));
        image.steps[i] = GST_VIDEO_FRAME_PLANE_STRIDE(&frame, i);
    }
    image.size = {GST_VIDEO_FRAME_WIDTH(&frame), GST_VIDEO_FRAME_HEIGHT(&frame)};
    return image;
}

// Every other row, from the first or the second one on.
Image fieldOf(Image image, int32_t field) {
    for (size_t i = 0; i < image.planes.size(); ++i) {
        if (image.planes[i]) image.planes[i] += field * static_cast<ptrdiff_t>(image.steps[i]);
        image.steps[i] *= 2;
    }
    image.size.height = (image.size.height + 1 - field) / 2;
    return image;
}

Image below(Image image, int32_t row) {
    for (size_t i = 0; i < image.planes.size(); ++i)
        if (image.planes[i]) image.planes[i] += row * static_cast<ptrdiff_t>(image.steps[i]);
    return image;
}

// A part of `count` equal ones, but for the remainders.
struct Range {
    int32_t first, end;
};
Range rangeOf(int32_t whole, int part, int count) {
    return {static_cast<int32_t>(int64_t{whole} * part / count), static_cast<int32_t>(int64_t{whole} * (part + 1) / count)};
}

void convertStrips(const ZelvPlan& plan, const Image& in, const Image& out, tool::Workers& workers) {
    const int32_t height = out.size.height, strips = (height + stripRows - 1) / stripRows;
    const int parts = std::min(strips, workers.count());
    workers.run(parts, [&](int part, int) {
        const Range range = rangeOf(strips, part, parts);
        const int32_t first = range.first * stripRows, end = std::min(height, range.end * stripRows);
        zelvConvertRows(&plan, in.planes.data(), in.steps.data(), out.planes.data(), out.steps.data(), out.size, first,
                        end - first);
    });
}

}  // namespace

bool Conversion::plan(const GstVideoInfo& in, const GstVideoInfo& out, const ZelvOptions& options) {
    const std::optional<ZelvFormat> source = description(in), target = description(out);
    bySites_ = hasSitesOfTwoRows(in) || hasSitesOfTwoRows(out);
    return source && target && zelvMakePlan(&plan_, &*source, &*target, &options) == zelStsNoErr;
}

bool Conversion::plan(const Mosaic& in, const GstVideoInfo& out, Demosaic demosaic, const ZelvOptions& options) {
    const int32_t least = demosaic == demosaicAhd ? 5 : 2;
    const std::optional<ZelvFormat> target = description(out);
    if (!target || !isRgb(out) || in.size.width < least || in.size.height < least) return false;
    mosaic_ = in;
    demosaic_ = demosaic;
    isRgb24_ = GST_VIDEO_INFO_FORMAT(&out) == GST_VIDEO_FORMAT_RGB && target->range == zelvFull;
    const ZelvFormat rgb{zelvInterleaved, "RGB", zelv444, 8, zelvLowBits, zelvMatrixRgb, zelvFull, 0, 0, 0};
    return zelvMakePlan(&plan_, &rgb, &*target, &options) == zelStsNoErr;
}

void Conversion::convert(const GstVideoFrame& in, GstVideoFrame& out, tool::Workers& workers) const {
    const Image from = imageOf(in), to = imageOf(out);
    if (!bySites_ || !GST_VIDEO_FRAME_IS_INTERLACED(&in)) return convertStrips(plan_, from, to, workers);
    for (const int32_t field : {0, 1})
        if (to.size.height > field) convertStrips(plan_, fieldOf(from, field), fieldOf(to, field), workers);
}

// A mosaic is cut at the same rows for any number of threads. AHD gives what one call gives where that is above rows with red,
// and where the destination isn't what the function writes, a strip at a time lies in the worker's memory, which stays in its
// cache.
void Conversion::convert(const uint8_t* mosaic, int32_t step, GstVideoFrame& out, tool::Workers& workers) {
    const bool isAhd = demosaic_ == demosaicAhd, redIsInOddRows = mosaic_.grid == zelBayerBGGR || mosaic_.grid == zelBayerGBRG;
    const int32_t unit = isAhd ? ahdStripRows : stripRows, shift = isAhd && redIsInOddRows ? 1 : 0;
    const int32_t rows = mosaic_.size.height, strips = std::max(1, (rows - shift + unit - 1) / unit);
    const Image to = imageOf(out);
    scratch_.resize(static_cast<size_t>(workers.count()));
    workers.run(std::min(strips, workers.count()), [&](int part, int worker) {
        const Range range = rangeOf(strips, part, std::min(strips, workers.count()));
        for (int32_t strip = range.first; strip < range.end; ++strip) {
            const int32_t first = strip == 0 ? 0 : strip * unit + shift, end = std::min(rows, (strip + 1) * unit + shift);
            demosaic(mosaic, step, to, {0, first, mosaic_.size.width, end - first}, scratch_[static_cast<size_t>(worker)]);
        }
    });
}

void Conversion::demosaic(const uint8_t* mosaic, int32_t step, const Image& out, const ZelRect& region,
                          std::vector<uint8_t>& scratch) const {
    const int32_t rgbStep = region.width * rgbBytes, ahdStep = region.width + ahdMargin;
    const size_t rgbSize = isRgb24_ ? 0 : static_cast<size_t>(region.height) * static_cast<size_t>(rgbStep);
    scratch.resize(rgbSize + (demosaic_ == demosaicAhd ? size_t{ahdRows} * static_cast<size_t>(ahdStep) : 0));
    const Image to = below(out, region.y);
    uint8_t* const rgb = isRgb24_ ? to.planes[0] : scratch.data();
    const int32_t toStep = isRgb24_ ? to.steps[0] : rgbStep;
    if (demosaic_ == demosaicAhd)
        zeliDemosaicAHD_8u_C1C3R(mosaic, region, mosaic_.size, step, rgb, toStep, mosaic_.grid, scratch.data() + rgbSize,
                                 ahdStep);
    else
        zeliCFAToRGB_8u_C1C3R(mosaic, region, mosaic_.size, step, rgb, toStep, mosaic_.grid, 0);
    if (isRgb24_) return;
    const uint8_t* const from[] = {rgb};
    zelvConvert(&plan_, from, &rgbStep, to.planes.data(), to.steps.data(), {region.width, region.height});
}

}  // namespace zelconvert
