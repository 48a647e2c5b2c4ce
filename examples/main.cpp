// Takes pictures from RGB to 4:2:0 planar, 4:2:0 semi-planar and packed 4:2:2 and back, writes what came back as PNG and the
// 4:2:0 planes as a video of one frame, and tells how far the colours moved and how fast it went.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "picture_file.h"
#include "result_table.h"
#include "round_trip.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* usage =
    "usage: zelcc_roundtrip [-o FOLDER] PICTURE...\n"
    "PICTURE is a PNG or JPEG file; there is no default. The results go to FOLDER, or to the current folder.\n";

struct Arguments {
    fs::path folder = ".";
    std::vector<std::string> pictures;
};

bool parse(int count, char** words, Arguments& arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string word = words[i];
        if (word == "-o" && i + 1 < count)
            arguments.folder = words[++i];
        else if (word.starts_with('-'))
            return false;
        else
            arguments.pictures.push_back(word);
    }
    return !arguments.pictures.empty();
}

// False when a conversion failed.
bool convert(const std::string& path, const fs::path& folder) {
    const Picture original = readPicture(path);
    std::printf("%s: %d x %d\n", path.c_str(), original.size.width, original.size.height);
    const std::vector<RoundTrip> trips{planar420(original), semiPlanar420(original), packed422(original)};
    printTable(trips);

    const std::string stem = (folder / fs::path(path).stem()).string();
    bool complete = true;
    for (const RoundTrip& trip : trips) {
        if (trip.decoded.pixels.empty()) {
            complete = false;
            continue;
        }
        const std::string picture = stem + "-" + trip.layout + ".png";
        writePng(picture, trip.decoded);
        std::printf("%s: %d x %d\n", picture.c_str(), trip.decoded.size.width, trip.decoded.size.height);
        if (trip.frame) {
            const std::string video = stem + "-420.y4m";
            writeY4m(video, *trip.frame);
            std::printf("%s: %d x %d\n", video.c_str(), trip.frame->size.width, trip.frame->size.height);
        }
    }
    return complete;
}

}  // namespace

int main(int count, char** words) {
    Arguments arguments;
    if (!parse(count, words, arguments)) {
        std::fputs(usage, stderr);
        return 2;
    }
    bool complete = true;
    for (const std::string& picture : arguments.pictures) {
        try {
            fs::create_directories(arguments.folder);
            complete &= convert(picture, arguments.folder);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
            complete = false;
        }
    }
    return complete ? 0 : 1;
}
