// Takes a picture from RGB to 4:2:0 planar, 4:2:0 semi-planar and packed 4:2:2 and back, writes what came back as PNG and the
// 4:2:0 planes as a video of one frame, and tells how far the colours moved and how fast it went. Then shows on the picture as an
// interlaced frame what becomes of its chroma when the fields are mixed. Makes it gray, saturated and sepia, halves it in linear
// light and without, and merges a range of exposures to floats that are tone-mapped. Raises its lightness, turns its hues
// and maps its chroma in spaces that have them. Packs it into 16-bit words, with the low bits cut off and dithered, and dithers
// it to few levels. Last, takes it through the mosaic of a raw sensor, of each grid, and makes its colours again.
#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "colour_spaces.h"
#include "dithers.h"
#include "exposures.h"
#include "fields.h"
#include "half_size.h"
#include "mosaics.h"
#include "packed_words.h"
#include "picture_file.h"
#include "recoloured.h"
#include "result_table.h"
#include "round_trip.h"

namespace fs = std::filesystem;

namespace {

class Results {
  public:
    Results(const fs::path& picture, const fs::path& folder) : start_((folder / picture.stem()).string() + "-") {
        fs::create_directories(folder);
    }

    void write(const std::string& name, const Picture& picture) const {
        const std::string path = start_ + name + ".png";
        writePng(path, picture);
        std::printf("%s: %d x %d\n", path.c_str(), picture.size.width, picture.size.height);
    }
    void write(const std::string& name, const Frame420& frame) const {
        const std::string path = start_ + name + ".y4m";
        writeY4m(path, frame);
        std::printf("%s: %d x %d\n", path.c_str(), frame.size.width, frame.size.height);
    }

    // What shows most at a glance.
    void recommend() const {
        constexpr const char* views[][2] = {
            {"fields-detail", "chroma of an interlaced frame, fields mixed and fields kept apart"},
            {"tone-mapped", "three exposures merged, by their maximum and by their mean"},
            {"hue-turned", "hues turned by steps of 60 degrees"},
            {"rgb444-bands", "a sky in 444, low bits cut off and dithered"},
            {"4-levels-detail", "four levels by every method, beside the original"},
            {"mosaic-rggb-detail", "a mosaic by both methods, beside the original"}};
        std::printf("\nLook first at\n");
        for (const auto& [name, words] : views) std::printf("%s%s.png: %s\n", start_.c_str(), name, words);
    }

  private:
    std::string start_;
};

// False when a conversion failed.
bool convertToLayouts(const Picture& original, const Results& results) {
    const std::vector<RoundTrip> trips{planar420(original), semiPlanar420(original), packed422(original)};
    std::vector<Conversion> conversions;
    for (const RoundTrip& trip : trips) conversions.insert(conversions.end(), trip.conversions.begin(), trip.conversions.end());
    printTable(conversions);
    std::printf("\n");

    bool complete = true;
    for (const RoundTrip& trip : trips) {
        complete = complete && !trip.decoded.pixels.empty();
        if (trip.decoded.pixels.empty()) continue;
        results.write(trip.layout, trip.decoded);
        if (trip.frame) results.write(trip.layout, *trip.frame);
    }
    return complete;
}

// False when a conversion failed.
bool convertFields(const Picture& original, const Results& results) {
    constexpr int32_t movement = 16;
    std::printf(
        "\nAs an interlaced frame whose second field has moved by %d pixels, chroma of 4:2:2 halved and doubled again:\n\n",
        movement);
    const FieldComparison comparison = compareFields(interlaced(original, movement));
    printTable(comparison.conversions);
    std::printf("\n");
    if (comparison.sideBySide.pixels.empty()) return false;
    results.write("fields", comparison.sideBySide);
    results.write("fields-detail", comparison.detail);
    return true;
}

// False when a conversion failed.
bool convertIntensities(const Picture& original, const Results& results) {
    std::printf("\nIntensity, matrices over the channels, and linear light:\n\n");
    const Study colours = recoloured(original);
    const HalfSize half = halfSize(original);
    const Study range = exposures(original);
    const std::array<const Study*, 3> studies{&colours, &half, &range};

    std::vector<Conversion> conversions;
    for (const Study* study : studies)
        conversions.insert(conversions.end(), study->conversions.begin(), study->conversions.end());
    printTable(conversions);
    std::printf("\n");
    if (half.isComplete())
        std::printf("half size averaged in linear light, against the same without: mean difference %.3f, largest %d\n\n",
                    half.difference.mean, half.difference.largest);
    for (const Study* study : studies)
        for (const auto& [name, picture] : study->pictures) results.write(name, picture);
    return std::all_of(studies.begin(), studies.end(), [](const Study* study) { return study->isComplete(); });
}

// False when a conversion failed.
bool show(const char* title, const Study& study, const Results& results) {
    std::printf("\n%s:\n\n", title);
    printTable(study.conversions);
    std::printf("\n");
    for (const auto& [name, picture] : study.pictures) results.write(name, picture);
    return study.isComplete();
}

// False when a conversion failed.
bool convert(const fs::path& path, const fs::path& folder) {
    const Picture original = readPicture(path);
    std::printf("%s: %d x %d\n\n", path.c_str(), original.size.width, original.size.height);
    const Results results(path, folder);
    const bool areLayoutsComplete = convertToLayouts(original, results);
    const bool areFieldsComplete = convertFields(original, results);
    const bool areIntensitiesComplete = convertIntensities(original, results);
    const bool areSpacesComplete =
        show("Lightness, hue and chroma, each changed in a space that has it", colourSpaces(original), results);
    const bool areWordsComplete = show("Packed 16-bit words, the low bits cut off and dithered", packedWords(original), results);
    const bool areLevelsComplete = show("Few levels, without noise and with it", dithers(original), results);
    const bool areMosaicsComplete = show("Colours from the mosaics of raw sensors", mosaics(original), results);
    results.recommend();
    return areLayoutsComplete && areFieldsComplete && areIntensitiesComplete && areSpacesComplete && areWordsComplete &&
           areLevelsComplete && areMosaicsComplete;
}

}  // namespace

int main(int count, char** words) try {
    if (count < 2 || count > 3) {
        std::fputs(
            "usage: roundtrip PICTURE [FOLDER]\n"
            "PICTURE is a PNG or JPEG file; there is no default. The results go to FOLDER, or to the current one.\n",
            stderr);
        return 2;
    }
    return convert(words[1], count == 3 ? words[2] : ".") ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
