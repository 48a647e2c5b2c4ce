// Tests that every conversion of model::families() has to pass. A family adds those of few enough colours to try them all:
//   INSTANTIATE_TEST_SUITE_P(Family, ColourConversion, harness::rows(model::familyExports(), has), harness::nameOf);
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "harness/features.h"
#include "harness/placement.h"
#include "model/export.h"
#include "zelcc/chroma.h"

namespace harness {

uint64_t seed();  // of all random content, from the environment variable ZELCC_TEST_SEED

// Of so many cases of a sweep one is tried, from the environment variable ZELCC_TEST_SAMPLE; by default all are.
uint64_t sample();

class Conversion : public testing::TestWithParam<const model::Export*> {
  protected:
    static void SetUpTestSuite();

    const model::Export& tested() const { return *GetParam(); }

    // One call on random content beside the model.
    testing::AssertionResult matchesModel(ZelSize size, const Placements& placements);

    // Rows that share their memory leave the order in which they are stored open, unless they are equal.
    // Steps below 1 are refused by some, and images that are their own destination lie in one place.
    bool suits(const Placements& placements) const {
        const auto& [source, destination] = placements;
        if (tested().entry.isInPlace && source.name != destination.name) return false;
        if (tested().checksSteps && (source.bottomUp || source.oneRow || destination.bottomUp)) return false;
        return !placements.destination.oneRow || tested().peculiarity != model::Peculiarity::unevenRows;
    }

    // Whether the next case of a sweep is one that is tried.
    bool isSampled() {
        const bool isTried = swept_++ % sample() == 0;
        if (!isTried) noteLevels();
        return isTried;
    }

    // A region that is converted as a whole, whatever the site.
    ZelSize smallSize(int width) const { return {width, std::max(4, tested().geometry.minimum.height)}; }

    // Pictures of the whole sites of a region, filled at random.
    struct Pictures {
        Picture source, destination;
    };
    Pictures lay(ZelSize size, const Placements& placements, Random& random, Content content);

    PictureMemory sourceMemory_, destinationMemory_;

  private:
    uint64_t cases_ = 0;
    uint64_t swept_ = std::hash<std::string_view>()(tested().name);  // every export begins its sample elsewhere
};

// Conversions between images of one layout.
class InPlaceConversion : public Conversion {};

// Conversions that accept no step below 1.
class StepCheckingConversion : public Conversion {};

// Conversions of three 8-bit channels, few enough colours to try them all.
class ColourConversion : public Conversion {
  protected:
    // Converts all colours in rows of `width` pixels, of which the first `perRow` go through them.
    void convertAllColours(int width, int perRow, const Placement& placement);
};

using Has = bool (*)(const model::Export&);

inline auto rows(std::span<const model::Export> exports, Has has = nullptr) {
    std::vector<const model::Export*> rows;
    for (const model::Export& e : exports)
        if (!has || has(e)) rows.push_back(&e);
    return testing::ValuesIn(rows);
}

inline auto every(Has has = nullptr) {
    std::vector<const model::Export*> rows;
    for (const auto exports : model::families())
        for (const model::Export& e : exports)
            if (!has || has(e)) rows.push_back(&e);
    return testing::ValuesIn(rows);
}

// Of the conversions of slices those of the whole image.
inline bool isOfWholeImages(const model::Export& e) {
    return !e.slice.argument || e.slice.argument == (zelSliceTop | zelSliceMiddle | zelSliceBottom);
}

inline std::string nameOf(const testing::TestParamInfo<const model::Export*>& info) {
    return std::string(info.param->name) + info.param->slice.name;
}

}  // namespace harness
