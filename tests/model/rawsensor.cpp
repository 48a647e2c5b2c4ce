#include "model/rawsensor.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>

namespace model {

namespace {

enum Colour { red, green, blue };

}  // namespace

int Mosaic::colourAt(int x, int y) const {
    constexpr int grids[4][2][2] = {{{blue, green}, {green, red}},
                                    {{red, green}, {green, blue}},
                                    {{green, blue}, {red, green}},
                                    {{green, red}, {blue, green}}};
    return grids[grid][y & 1][x & 1];
}

namespace {

struct Offset {
    int x, y;
};

// The rounded mean of the neighbours inside the image. On an axis with one of them, that one counts twice.
int meanOf(const Mosaic& m, int x, int y, std::initializer_list<Offset> offsets) {
    int sum = 0;
    for (const auto [dx, dy] : offsets) {
        const int nx = m.contains(x + dx, y) ? x + dx : x - dx, ny = m.contains(x, y + dy) ? y + dy : y - dy;
        sum += m.at(nx, ny);
    }
    const int count = static_cast<int>(offsets.size());
    return (sum + count / 2) / count;
}

}  // namespace

Pixel interpolated(const Mosaic& m, int x, int y) {
    const int beside = meanOf(m, x, y, {{-1, 0}, {1, 0}}), above = meanOf(m, x, y, {{0, -1}, {0, 1}});
    const int own = m.colourAt(x, y);
    Pixel pixel{};
    pixel[own] = m.at(x, y);
    if (own == green) {
        const int colourBeside = m.colourAt(x + 1, y);
        pixel[colourBeside] = beside;
        pixel[red + blue - colourBeside] = above;
        return pixel;
    }
    pixel[red + blue - own] = meanOf(m, x, y, {{-1, -1}, {1, -1}, {-1, 1}, {1, 1}});
    const int mean = meanOf(m, x, y, {{-1, 0}, {1, 0}, {0, -1}, {0, 1}});
    pixel[green] = mean;
    if (m.contains(x - 2, y - 2) && m.contains(x + 2, y + 2)) {
        const int vertical = std::abs(m.at(x, y - 2) - m.at(x, y + 2)), horizontal = std::abs(m.at(x - 2, y) - m.at(x + 2, y));
        pixel[green] = vertical > horizontal ? beside : vertical < horizontal ? above : mean;
    }
    return pixel;
}

Homogeneity::Homogeneity(const Mosaic& mosaic) : mosaic_(mosaic) {
    const auto [width, height] = mosaic.size;
    for (int c = 0; c < candidates; ++c)
        for (int y = -margin - 1; y < height + margin + 1; ++y)
            for (int x = -margin - 1; x < width + margin + 1; ++x) {
                const Pixel p = colourOf(c, x, y);
                cells_[c].push_back({p,
                                     {(66 * p[red] + 129 * p[green] + 25 * p[blue] + 128) >> 8,
                                      (-38 * p[red] - 74 * p[green] + 112 * p[blue] + 128) >> 8,
                                      (112 * p[red] - 94 * p[green] - 18 * p[blue] + 128) >> 8}});
            }
    for (int y = -margin; y < height + margin; ++y)
        for (int x = -margin; x < width + margin; ++x) homogeneity_.push_back(homogeneityOf(x, y));
}

int Homogeneity::sample(int x, int y) const {
    const auto inside = [](int i, int size) {
        while (i < 0 || i >= size) i = i < 0 ? -i : 2 * (size - 1) - i;
        return i;
    };
    return mosaic_.at(inside(x, mosaic_.size.width), inside(y, mosaic_.size.height));
}

int Homogeneity::greenOf(int candidate, int x, int y) const {
    const int here = sample(x, y);
    if (mosaic_.colourAt(x, y) == green) return here;
    const Offset along = candidate == 0 ? Offset{0, 1} : Offset{1, 0};
    const auto neighbour = [&](int distance) { return sample(x + distance * along.x, y + distance * along.y); };
    const int a = neighbour(-1), b = neighbour(1);
    const int g = ((a + b) >> 1) + ((2 * here - neighbour(-2) - neighbour(2)) >> 2);
    return std::clamp(g, std::min(a, b), std::max(a, b));
}

Pixel Homogeneity::colourOf(int candidate, int x, int y) const {
    const int own = mosaic_.colourAt(x, y);
    Pixel pixel{};
    pixel[green] = greenOf(candidate, x, y);
    for (const int colour : {red, blue}) {
        if (colour == own) {
            pixel[colour] = sample(x, y);
            continue;
        }
        int sum = 0, count = 0;
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                if (mosaic_.colourAt(x + dx, y + dy) == colour) {
                    sum += sample(x + dx, y + dy) - greenOf(candidate, x + dx, y + dy);
                    ++count;
                }
        pixel[colour] = std::clamp(pixel[green] + (sum >> (count == 2 ? 1 : 2)), 0, mosaic_.highest);
    }
    return pixel;
}

int Homogeneity::homogeneityOf(int x, int y) const {
    constexpr Offset neighbours[4] = {{0, -1}, {0, 1}, {-1, 0}, {1, 0}};  // two along the column, two along the row
    int luma[candidates][4];
    int32_t chroma[candidates][4];
    for (int c = 0; c < candidates; ++c)
        for (int n = 0; n < 4; ++n) {
            const Pixel& a = cell(c, x, y).luma;
            const Pixel& b = cell(c, x + neighbours[n].x, y + neighbours[n].y).luma;
            luma[c][n] = std::abs(a[0] - b[0]);
            const int64_t u = a[1] - b[1], v = a[2] - b[2];
            chroma[c][n] = static_cast<int32_t>(static_cast<uint32_t>(u * u + v * v));  // wraps, which is meant
        }
    const int lumaLimit = std::min(std::max(luma[1][2], luma[1][3]), std::max(luma[0][0], luma[0][1]));
    const int32_t chromaLimit = std::min(std::max(chroma[1][2], chroma[1][3]), std::max(chroma[0][0], chroma[0][1]));
    int like[candidates] = {};
    for (int c = 0; c < candidates; ++c)
        for (int n = 0; n < 4; ++n) like[c] += luma[c][n] <= lumaLimit && chroma[c][n] <= chromaLimit;
    return like[1] - like[0];
}

namespace {

// The inner part of a side: whole cells of red and what follows it, at least 5 samples from the image's edges.
struct Span {
    int begin, end;
};
Span innerPart(int start, int length, int size, bool firstIsRed) {
    int begin = std::max(start, 5), end = std::min(start + length, size - 5);
    if ((begin % 2 == 0) != firstIsRed) ++begin;
    end = begin + ((end - begin) & ~1);
    return {begin, end};
}

}  // namespace

std::vector<Pixel> Homogeneity::choose(const ZelRect& region) const {
    const bool firstRowHasRed = mosaic_.colourAt(0, 0) == red || mosaic_.colourAt(1, 0) == red;
    const bool firstColumnHasRed = mosaic_.colourAt(0, 0) == red || mosaic_.colourAt(0, 1) == red;
    Span columns = innerPart(region.x, region.width, mosaic_.size.width, firstColumnHasRed),
         rows = innerPart(region.y, region.height, mosaic_.size.height, firstRowHasRed);
    if (columns.begin >= columns.end || rows.begin >= rows.end) rows = {INT_MAX, INT_MAX};
    std::vector<Pixel> result;
    for (int y = region.y; y < region.y + region.height; ++y) {
        int t = 1;
        for (int x = region.x; x < region.x + region.width; ++x) {
            if (y >= rows.begin && y < rows.end && (x == columns.begin || x == columns.end)) t = 1;
            int sum = 0;
            for (int dy = -1; dy <= 1; ++dy)
                for (int dx = -1; dx <= 1; ++dx) sum += homogeneity_[index(x + dx, y + dy, margin)];
            if (sum != 0) t = sum;
            result.push_back(cell(t < 0 ? 0 : 1, x, y).colour);
        }
    }
    return result;
}

}  // namespace model
