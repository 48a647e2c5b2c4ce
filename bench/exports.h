// The exports under measurement, as the registry of functions has them: what each converts, and how it is called.
#pragma once

#include <functional>
#include <string>

#include "catalog/registry.h"
#include "image.h"

namespace bench {

// One conversion of a source into a destination. 0 is success.
using Call = std::function<int()>;

// What functions take by pointer behind the size: the weights of gray, and the first row of a matrix that also mixes the other
// channels and keeps the fourth.
template <class Number>
inline constexpr Number parameters[16] = {
    Number(0.299), Number(0.587), Number(0.114), 0, Number(0.1), Number(0.8), Number(0.1), 0,
    Number(0.1),   Number(0.1),   Number(0.8),   0, 0,           0,           0,           1};

// What a conversion computes beyond the change of layout. Only contenders of the same variant are compared.
enum class Variant {
    replicate,  // a subsampled chroma sample serves all pixels of its site
    matrix709,  // the same, by BT.709 in studio range
    matrix709Full,
    interpolate,  // chroma is interpolated between sites
    matrix,       // the channels go through the caller's matrix
    inPlace,      // the same, of the destination into itself
    curve,        // the channels go through a transfer curve
    inverseCurve,
    byMaximum,  // the image's maximum becomes white
    byMean,     // twice its mean does
    smooth,     // luma and chroma are filtered
    toLevels,   // samples go to their nearest level
    ordered,    // or to one by thresholds of a matrix
    orderedWithNoise,
    floydSteinberg,  // or pass the difference on
    floydSteinbergWithNoise,
    jarvisJudiceNinke,
    stucki,
    stuckiWithNoise,
    fieldwise,  // rows of chroma are interpolated within their field
    toXyz,      // linear RGB to a space of the same layout, and back
    fromXyz,
    toYcc,
    fromYcc,
    toHls,
    fromHls,
    toHsv,
    fromHsv,
    toLuv,
    fromLuv,
    toLab,
    fromLab,
    lift,  // luma and differences are integers of the lifting transform
    reversible,
    dithered,     // levels are dithered in a fixed pattern
    mosaic,       // the source is the mosaic of a raw sensor
    homogeneity,  // the same, by the more homogeneous one of two candidates
};

struct Task {
    Format source;
    Format destination;
    Variant variant = Variant::replicate;

    bool operator==(const Task&) const = default;
};

struct Export {
    std::string name;  // with a suffix for each way to reduce
    Task task;
    const catalog::Function* function;
    const catalog::Conversion* conversion;
    ZelDitherType dither = zelDitherNone;
    int noise = 0;

    // From the library that bindTo names.
    Call bind(const Image& source, const Image& destination) const;
};

std::span<const Export> exports();

// The name of the first export that does the same task but for the order of channels and of chroma, and for the matrix: one of
// many twins stands for all.
const std::string& taskNameOf(const Export& row);

}  // namespace bench
