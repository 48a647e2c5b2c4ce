// Takes a picture from RGB to 4:2:0 planar, 4:2:0 semi-planar and packed 4:2:2 and back, writes what came back as PNG and the
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

// False when a conversion failed.
bool convert(const fs::path& path, const fs::path& folder) {
    const Picture original = readPicture(path);
    std::printf("%s: %d x %d\n\n", path.c_str(), original.size.width, original.size.height);
    const std::vector<RoundTrip> trips{planar420(original), semiPlanar420(original), packed422(original)};
    printTable(trips);
    std::printf("\n");

    fs::create_directories(folder);
    bool complete = true;
    const auto target = [&](const std::string& ending) { return (folder / path.stem()).string() + "-" + ending; };
    const auto announce = [](const std::string& name, ZelSize size) {
        std::printf("%s: %d x %d\n", name.c_str(), size.width, size.height);
    };
    for (const RoundTrip& trip : trips) {
        if (trip.decoded.pixels.empty()) {
            complete = false;
            continue;
        }
        const std::string picture = target(trip.layout + ".png");
        writePng(picture, trip.decoded);
        announce(picture, trip.decoded.size);
        if (trip.frame) {
            const std::string video = target(trip.layout + ".y4m");
            writeY4m(video, *trip.frame);
            announce(video, trip.frame->size);
        }
    }
    return complete;
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
