#include "pipelines.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "library.h"
#include "zelcc.h"

namespace bench {

namespace {

// 4:2:0 to RGB, the colours twisted in place, and back to 4:2:0.
struct Library {
    decltype(&zeliYCbCr420ToRGB_8u_P3C3R) decode = bound(zeliYCbCr420ToRGB_8u_P3C3R);
    decltype(&zeliColorTwist32f_8u_C3R) twist = bound(zeliColorTwist32f_8u_C3R);
    decltype(&zeliRGBToYCbCr420_8u_C3P3R) encode = bound(zeliRGBToYCbCr420_8u_C3P3R);
};

constexpr float matrix[12] = {0.8f, 0.1f, 0.1f, 0, 0.1f, 0.8f, 0.1f, 0, 0.1f, 0.1f, 0.8f, 0};

class Pipeline {
  public:
    explicit Pipeline(Size size)
        : size_(size),
          from_(Layout::i420, size),
          first_(Layout::rgb24, size),
          second_(Layout::rgb24, size),
          to_(Layout::i420, size) {
        paint(from_.image);
    }

    // By strips of some rows, each through all three calls. The RGB of all strips may lie in the same place.
    void run(const Library& library, int rows, bool samePlace) const {
        for (int row = 0; row < size_.height; row += rows) {
            const ZelSize strip{size_.width, std::min(rows, size_.height - row)};
            const Planes from(from_.image, row), to(to_.image, row);
            const int rgbRow = samePlace ? 0 : row;
            uint8_t* const first = at(first_.image.planes[0], rgbRow);
            uint8_t* const second = at(second_.image.planes[0], rgbRow);
            const int step = first_.image.planes[0].step;
            const uint8_t* const sources[] = {from.data[0], from.data[1], from.data[2]};
            library.decode(sources, from.steps, first, step, strip);
            library.twist(first, step, second, step, strip, matrix);
            library.encode(second, step, to.data, to.steps, strip);
        }
    }

  private:
    static uint8_t* at(const Plane& plane, int row) { return plane.data + ptrdiff_t{plane.step} * row; }

    struct Planes {
        uint8_t* data[3];
        int32_t steps[3];

        Planes(const Image& image, int row) {
            for (int i = 0; i < 3; ++i) {
                data[i] = at(image.planes[size_t(i)], i == 0 ? row : row / 2);
                steps[i] = image.planes[size_t(i)].step;
            }
        }
    };

    Size size_;
    OwnImage from_, first_, second_, to_;
};

struct Way {
    std::string name;
    std::function<void()> run;
    std::vector<double> seconds;
};

}  // namespace

void runPipelines(std::span<const Size> sizes, const Effort& effort) {
    std::vector<std::pair<std::string, Library>> libraries{{"", {}}};
    for (const std::string& file : effort.others) {
        bindTo(file);
        libraries.emplace_back(" " + file, Library{});
        bindTo({});
    }
    constexpr int stripRows[] = {8, 16, 32, 64};
    std::printf("%9s %10s %8s  %s\n", "size", "frames/s", "of whole", "way");
    for (const Size size : sizes) {
        const Pipeline pipeline(size);
        std::vector<Way> ways;
        for (const auto& [name, library] : libraries) {
            ways.push_back({"whole frames" + name, [&] { pipeline.run(library, size.height, false); }, {}});
            for (const int rows : stripRows)
                ways.push_back(
                    {"strips of " + std::to_string(rows) + " rows" + name, [&, rows] { pipeline.run(library, rows, true); }, {}});
        }
        for (int round = 0; round < effort.rounds; ++round)
            for (Way& way : ways) {
                using Clock = std::chrono::steady_clock;
                way.run();
                double total = 0;
                do {
                    const auto start = Clock::now();
                    way.run();
                    way.seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
                    total += way.seconds.back();
                } while (total < effort.sliceSeconds);
            }
        const auto secondsOf = [&](Way& way) {
            if (effort.best) return std::ranges::min(way.seconds);
            const auto middle = way.seconds.begin() + static_cast<ptrdiff_t>(way.seconds.size() / 2);
            std::ranges::nth_element(way.seconds, middle);
            return *middle;
        };
        const double whole = secondsOf(ways.front());
        for (Way& way : ways) {
            const double seconds = secondsOf(way);
            std::printf("%4dx%-4d %10.1f %8.2f  %s\n", size.width, size.height, 1 / seconds, whole / seconds, way.name.c_str());
        }
    }
}

}  // namespace bench
