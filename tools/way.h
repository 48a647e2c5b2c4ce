// The functions and conversions that lead from one format to another.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "catalog/colours.h"
#include "tools/formats.h"

namespace tool {

// What is asked of a conversion beside its ends. A wish that no function of a way meets rules the way out.
struct Wishes {
    catalog::Colours colours = {};
    std::string demosaic = {};  // bilinear or ahd
    bool filter = false, interlaced = false;
    bool filtersAtSites = false;  // where the functions' filter would have chroma at another place
    std::string gamma = {};       // forward or inverse
    std::string toneMap = {};     // maximum or mean
    std::string dither = {};      // none, bayer, floyd-steinberg, jarvis or stucki
    std::optional<int> levels = {}, noise = {}, threshold = {};
    std::vector<double> twist = {}, weights = {};
    float lowest = 0, highest = 1;

    ZelDitherType ditherType() const;
    ZelvOptions videoOptions(const Format& from, const Format& to) const;
    bool reduces() const { return levels || noise || threshold || !dither.empty(); }
};

// The result's alpha: what the function writes, the source's, which is copied beforehand, or opaque before or after the call.
enum class Alpha { written, copied, opaqueBefore, opaqueAfter };

struct Step {
    const Conversion* conversion;  // none by libzelvideo, and where samples are moved as they are
    int source, target;            // formats
    Alpha alpha = Alpha::written;
    bool isByVideo = false;

    bool moves() const { return !conversion && !isByVideo; }
    const Function& function() const { return catalog::functions()[conversion->function]; }
    const Format& sourceFormat() const { return catalog::formats()[source]; }
    const Format& targetFormat() const { return catalog::formats()[target]; }
    bool wantsWholeImage(const Wishes& wishes) const;  // it depends on rows above, or on all of them
    Site site(const Wishes& wishes) const;             // what images and strips of them are cut to
    // Chroma that lies on the first row or column of its site becomes that of the rows or columns between.
    bool interpolatesRows() const;
    bool interpolatesColumns() const;
};

using Way = std::vector<Step>;

// The way that loses least, and of those the shortest; nothing if there is none. Both ends are canonical formats.
std::optional<Way> findWay(const Format& from, const Format& to, const Wishes& wishes);

// All formats that some way leads to, by name.
std::vector<const Format*> reachable(const Format& from, const Wishes& wishes);

// What is called, or moved samples.
std::string nameOf(const Step& step);

// A line for each step: its name and the formats between which it leads.
std::string describe(const Way& way);

// Throws a NoWayError that lists what is reachable.
Way wayOrRefusal(const Format& from, const Format& to, const Wishes& wishes);

}  // namespace tool
