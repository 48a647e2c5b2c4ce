// The way from one format to another over the functions of the libraries, for programs that convert what a user names.
#pragma once

#include <functional>

#include "catalog/names.h"

namespace catalog {

struct Wishes {
    std::string_view matrix = "601";  // of Conversion, by which luma and chroma are computed and undone
    // Which of the wishes, a bit each, a conversion meets; none if they forbid it.
    std::function<std::optional<int>(const Conversion&)> met;
    int all = 0;  // bits that the steps have to collect
    // The same of a conversion by libzelvideo, from the first format of a way or to the last; null where there is to be none.
    std::function<std::optional<int>(const Format&, const Format&)> metByVideo = nullptr;
};

// The plain ways, and one step by a method or verb of Conversion if one is named.
Wishes byMethod(std::string_view matrix, std::string_view method);

// One step. The orders say which plane of the step's own formats each plane of the function is.
struct Step {
    const Conversion* conversion = nullptr;  // none: by libzelvideo, or samples are moved as they are, see rearrange
    const Format* source = nullptr;
    const Format* target = nullptr;
    std::array<int8_t, 4> sourceOrder{0, 1, 2, 3}, targetOrder{0, 1, 2, 3};
    bool isByVideo = false;

    bool moves() const { return !conversion && !isByVideo; }
    // Between formats as they are, whatever the order of their planes.
    static Step byVideo(const Format& source, const Format& target) {
        return {.source = &source, .target = &target, .isByVideo = true};
    }
};

// The steps that lose and cost least, none if the formats are the same. No format on the way holds less of the image than one of
// its ends: fewer bits or sites of chroma, no colour, no alpha.
std::optional<std::vector<Step>> path(const Format& source, const Format& target, const Wishes& wishes);

// Whether a plain way would mix the fields of an interlaced frame: where chroma gets or loses rows.
bool mixesFields(const Conversion& conversion);

// Images that the steps convert to their last pixel are multiples of this size.
Site wholeSites(std::span<const Step> steps);

// Whether the formats hold the same samples, but for an alpha that one of them lacks, at different places.
bool canRearrange(const Format& source, const Format& target);
// Of these it is libzelvideo that moves by vectors: RGB of whole numbers at one depth.
bool isMovedByVideo(const Format& source, const Format& target);
// An alpha that the source lacks is filled with opaque().
void rearrange(const Format& source, const Side& from, const Format& target, const Side& to, ZelSize size);

}  // namespace catalog
