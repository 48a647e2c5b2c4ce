// What luma and chroma of an image mean, and the way from one meaning to another: over functions where they have exactly the
// matrix and the range that are asked for, and by libzelvideo otherwise.
#pragma once

#include <string>

#include "catalog/path.h"
#include "zelvideo.h"

namespace catalog {

const Matrix* findMatrix(std::string_view name);

// Of a side that is luma and chroma, or gray; nothing else has one.
struct Colour {
    std::string matrix = "601";
    std::optional<bool> isFullRange = {};  // unknown: that of the functions, of gray the full one
    int32_t location = zelvLeft;
};

struct Colours {
    Colour source = {}, target = {};
};

// Nothing if the library doesn't describe the format, or has no such matrix.
std::optional<ZelvFormat> describe(const Format& format, const Colour& colour);

// Whether samples of the name are full range, as of yuvj420p, which is yuv420p otherwise.
bool saysFullRange(std::string_view formatName);

// The steps by the wishes, of which the matrix is set here; none where the ends have the same samples.
std::optional<std::vector<Step>> path(const Format& source, const Format& target, const Colours& colours, Wishes wishes);

// What a method of Conversion means to libzelvideo: chroma by filters at its sites, and fewer bits by a pattern.
ZelvOptions videoOptions(std::string_view method);
// Steps by functions and by libzelvideo, one of them by the method if one is named.
Wishes byMethod(std::string_view method);

// The plan of a step by libzelvideo. Statuses are those of zelvMakePlan, and zelStsBadArgErr where a side can't be described.
ZelStatus makePlan(ZelvPlan* plan, const Format& source, const Format& target, const Colours& colours,
                   const ZelvOptions& options);

}  // namespace catalog
