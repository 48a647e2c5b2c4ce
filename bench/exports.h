// The table of the exports under measurement, a row each.
#pragma once

#include "bind.h"

namespace bench {

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
    std::string_view name;
    Task task;
    Bind bind;
};

std::span<const Export> exports();

}  // namespace bench
