#include "tools/bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include "tools/errors.h"
#include "tools/exercise.h"
#include "tools/level.h"
#include "tools/sizes.h"
#include "tools/way.h"
#include "tools/workers.h"

namespace tool {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int imageCount = 3;  // as many as zelcc convert has under way

double secondsSince(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

int64_t bytesMoved(const Function& function, Size size) {
    const Conversion& c = conversionOf(function);
    const auto formats = catalog::formats();
    return static_cast<int64_t>(fileBytes(formats[c.source], size) + fileBytes(formats[c.target], size));
}

}  // namespace

int bench(const BenchOptions& options) {
    const Function& function = functionNamed(options.function);
    const Conversion& c = conversionOf(function);
    const Step step{&c, c.source, c.target};
    const Site site = step.site({});
    const Size size = wholeSites(parseSize(options.size), site);
    const bool isWhole = step.wantsWholeImage({}) || !function.takesSteps;
    if (isWhole && options.threads > 1)
        throw UsageError(std::string(function.name) + " works on whole images; leave --threads out");

    std::vector<Exercise> images;
    for (unsigned i = 0; i < imageCount; ++i) images.emplace_back(function, size, Lay::boundary, 0, i);
    Workers workers(options.threads);
    const int rows = roundUp((size.height + options.threads - 1) / options.threads, site.height);
    const int strips = (size.height + rows - 1) / rows;
    const auto frame = [&](const Exercise& image) {
        if (isWhole) return image.call();
        ZelStatus worst = zelStsNoErr;
        workers.run(strips, [&](int strip, int) {
            const ZelStatus status = image.callStrip(strip * rows, std::min(rows, size.height - strip * rows));
            if (status < 0) worst = status;
        });
        return worst;
    };
    for (const Exercise& image : images)  // pages and caches are touched once
        if (frame(image) < 0) throw UsageError(std::string(function.name) + " refuses images of this size; give a larger one");

    int64_t count = 0;
    double best = 1e9;
    const auto start = Clock::now();
    while (secondsSince(start) < options.seconds) {
        const auto begin = Clock::now();
        frame(images[static_cast<size_t>(count++ % imageCount)]);
        best = std::min(best, secondsSince(begin));
    }
    const double mean = secondsSince(start) / static_cast<double>(count);
    const double pixels = static_cast<double>(size.width) * size.height;
    std::printf("%s, %dx%d, level %s, %d thread%s\n", std::string(function.name).c_str(), size.width, size.height,
                currentLevel().c_str(), options.threads, options.threads > 1 ? "s" : "");
    std::printf("%.3f ms a frame (best %.3f), %.1f frames/s, %.0f Mpixel/s, %.2f GB/s read and written\n", mean * 1e3, best * 1e3,
                1 / mean, pixels / mean / 1e6, static_cast<double>(bytesMoved(function, size)) / mean / 1e9);
    return success;
}

}  // namespace tool
