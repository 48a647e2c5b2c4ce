// Every kind of format to every other on guarded memory, beside the model; the same in strips.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <utility>

#include "video/formats.h"
#include "video/frames.h"

namespace video {
namespace {

int sampleOf() {
    const char* const text = std::getenv("ZELCC_TEST_SAMPLE");
    const int n = text ? std::atoi(text) : 1;
    return n < 1 ? 1 : n;
}

std::string text(const ZelvFormat& f) {
    char line[160];
    std::snprintf(line, sizeof line, "{%d, \"%s\", %d, %d, %d, %d, %d, %d, %d, %d}", f.layout, f.components, f.sampling, f.depth,
                  f.alignment, f.matrix, f.range, f.location, f.kr, f.kb);
    return line;
}

// Floats of a source are taken from around 0 to 1, and some that are no numbers of it.
void setFloats(const Picture& p, harness::Random& random) {
    for (int y = 0; y < p.size.height; ++y)
        for (int x = 0; x < p.size.width; ++x)
            for (int c = 0; c < (has(p.format, 'A') || has(p.format, 'X') ? 4 : 3); ++c) {
                float value = static_cast<float>(static_cast<double>(random.next() >> 40) / (1 << 23) - 0.5);
                if (random.next() % 16 == 0) value = static_cast<float>(random.next() % 65536) / 65535.0f;
                uint32_t bits;
                std::memcpy(&bits, &value, 4);
                if (random.next() % 64 == 0) bits = random.next() % 2 ? 0x7f800000 : 0x80000001;
                setSample(p, Channel(c), x, y, bits);
            }
}

void compare(const ZelvFormat& from, const ZelvFormat& to, const ZelvOptions& options, ZelSize size, harness::Random& random) {
    std::ostringstream about;
    about << text(from) << " to " << text(to) << ", options " << options.up << options.down << options.dither << ", "
          << size.width << " x " << size.height;
    SCOPED_TRACE(about.str());
    ZelvPlan plan;
    ASSERT_EQ(zelvMakePlan(&plan, &from, &to, &options), zelStsNoErr);
    const auto gap = [&] { return static_cast<int>(random.next() % 3 == 0 ? random.next() % 70 : 0); };
    const Frame source(from, size, gap(), random.next() % 2 == 0, random.next() % 4 == 0, random);
    if (from.depth == 32) setFloats(source.picture(), random);
    const int toGap = gap();
    const bool atStart = random.next() % 2 == 0, upward = random.next() % 4 == 0;
    Frame result(to, size, toGap, atStart, upward, random), expected(to, size, toGap, atStart, upward, random),
        strips(to, size, toGap, atStart, upward, random);
    expected.copyFrom(result);
    strips.copyFrom(result);
    convert(source.picture(), expected.picture(), options);
    ASSERT_EQ(run(plan, source.picture(), result.picture()), zelStsNoErr);
    if (!result.equals(expected)) {
        for (int c = 0; c < (isGray(to) ? 1 : has(to, 'A') || has(to, 'X') ? 4 : 3); ++c) {
            const bool chroma = !isRgb(to) && (c == 1 || c == 2);
            const int across = chroma ? sitesAcross(to) : 1, down = chroma ? sitesDown(to) : 1;
            for (int y = 0; y < (size.height + down - 1) / down; ++y)
                for (int x = 0; x < (size.width + across - 1) / across; ++x)
                    ASSERT_EQ(sample(result.picture(), Channel(c), x, y), sample(expected.picture(), Channel(c), x, y))
                        << "channel " << c << " at " << x << ", " << y;
        }
        FAIL() << "bytes that belong to no sample differ";
    }
    for (int y = 0; y < size.height;) {
        const int rows = std::min(size.height - y, 2 * (1 + static_cast<int>(random.next() % 3)));
        const Picture &f = source.picture(), &t = strips.picture();
        ASSERT_EQ(zelvConvertRows(&plan, f.planes.data(), f.steps.data(), t.planes.data(), t.steps.data(), size, y, rows),
                  zelStsNoErr);
        y += rows;
    }
    EXPECT_TRUE(strips.equals(expected)) << "in strips";
}

TEST(VideoSweep, EveryPairOfShapes) {
    harness::Random random(1);
    const auto below = [&](int n) { return static_cast<int>(random.next() % static_cast<uint64_t>(n)); };
    constexpr int count = static_cast<int>(sizeof shapes / sizeof *shapes);
    const int sample = sampleOf();
    for (int pair = 0; pair < count * count; pair += sample)
        for (int turn = 0; turn < 4; ++turn) {
            const auto drawn = [&](int shape) {
                bool isFirst = true;
                return anyFormat([&](int n) { return std::exchange(isFirst, false) ? shape : below(n); });
            };
            const ZelvFormat from = drawn(pair / count), to = drawn(pair % count);
            const ZelSize size{1 + below(turn == 3 ? 200 : 40), 1 + below(7)};
            compare(from, to, {below(2), below(2), below(2)}, size, random);
            if (HasFatalFailure()) return;
        }
}

TEST(VideoSweep, AnyFormats) {
    harness::Random random(2);
    const auto below = [&](int n) { return static_cast<int>(random.next() % static_cast<uint64_t>(n)); };
    for (int turn = 0; turn < 6000 / sampleOf(); ++turn) {
        const ZelSize size{1 + below(turn % 50 == 0 ? 2200 : 150), 1 + below(6)};
        compare(anyFormat(below), anyFormat(below), {below(2), below(2), below(2)}, size, random);
        if (HasFatalFailure()) return;
    }
}

// Pairs that are asked for most, wide enough for whole blocks of every level.
TEST(VideoSweep, FrequentPairs) {
    harness::Random random(3);
    const auto below = [&](int n) { return static_cast<int>(random.next() % static_cast<uint64_t>(n)); };
    constexpr Shape lumas[] = {{zelvPlanar, "YUV"}, {zelvPlanar, "YVU"}, {zelvSemiPlanar, "YUV"}, {zelvSemiPlanar, "YVU"}};
    constexpr Shape colours[] = {{zelvInterleaved, "RGB"},  {zelvInterleaved, "BGR"},  {zelvInterleaved, "BGRA"},
                                 {zelvInterleaved, "RGBX"}, {zelvInterleaved, "RGBA"}, {zelvInterleaved, "ARGB"},
                                 {zelvDwords, "BGRX"},      {zelvDwords, "RGBA"},      {zelvPlanar, "GBR"}};
    for (int turn = 0; turn < 4000 / sampleOf(); ++turn) {
        const auto format = [&](const Shape& shape) {
            const bool isRgb = std::strchr(shape.components, 'R');
            ZelvFormat f{};
            f.layout = shape.layout;
            std::strcpy(f.components, shape.components);
            f.depth = shape.layout == zelvDwords ? 10 : std::array{8, 8, 10, 12, 16}[static_cast<size_t>(below(5))];
            f.alignment = f.depth > 8 && shape.layout != zelvDwords ? below(2) : 0;
            f.range = below(2);
            f.matrix = isRgb ? 0 : std::array{1, 5, 9, 8}[static_cast<size_t>(below(4))];
            f.sampling = isRgb ? 0 : below(3);
            return f;
        };
        const ZelvFormat luma = format(lumas[below(4)]), colour = format(colours[below(9)]);
        const ZelSize size{below(6) == 0 ? 1000 + below(200) : 30 + below(200), 1 + below(5)};
        const bool decodes = below(2) == 0;
        ZelvFormat other = format(lumas[below(4)]);
        other.sampling = luma.sampling;
        other.matrix = luma.matrix;
        if (below(2) == 0) other.range = luma.range;
        compare(luma, other, {0, 0, below(8) == 0}, size, random);
        compare(decodes ? luma : colour, decodes ? colour : luma, {below(8) == 0, below(8) == 0, below(8) == 0}, size, random);
        ZelvFormat bytes = format(colours[below(5)]), reordered = format(colours[below(5)]);
        bytes.depth = reordered.depth = 8;
        bytes.alignment = reordered.alignment = 0;
        if (below(4) != 0) reordered.range = bytes.range;
        compare(bytes, reordered, {0, 0, 0}, size, random);
        if (HasFatalFailure()) return;
    }
}

TEST(VideoSweep, EveryByteToAnotherRange) {
    harness::Random random(4);
    for (const int matrix : {zelvMatrix709, zelvMatrixYCgCo})
        for (const int range : {zelvLimited, zelvFull}) {
            const ZelvFormat from{zelvPlanar, "YUV", zelv444, 8, 0, matrix, range, 0, 0, 0};
            ZelvFormat to = from;
            to.range = zelvFull - range;
            compare(from, to, {}, {1000, 7}, random);
        }
}

}  // namespace
}  // namespace video
