// Error diffusion by plain loops, a pixel after the other, as programs that have no library for it do it.
#include <iterator>
#include <utility>
#include <vector>

#include "peers.h"

namespace bench {

namespace {

struct Tap {
    int column, row;  // from the pixel that takes up the error
    float weight;
};

constexpr Tap floydSteinbergTaps[] = {{-1, 0, 7 / 16.f}, {-1, -1, 1 / 16.f}, {0, -1, 5 / 16.f}, {1, -1, 3 / 16.f}};
constexpr Tap jarvisJudiceNinkeTaps[] = {{-1, 0, 7 / 48.f},  {-2, 0, 5 / 48.f}, {-2, -1, 3 / 48.f}, {-1, -1, 5 / 48.f},
                                         {0, -1, 7 / 48.f},  {1, -1, 5 / 48.f}, {2, -1, 3 / 48.f},  {-2, -2, 1 / 48.f},
                                         {-1, -2, 3 / 48.f}, {0, -2, 5 / 48.f}, {1, -2, 3 / 48.f},  {2, -2, 1 / 48.f}};
constexpr Tap stuckiTaps[] = {{-1, 0, 8 / 42.f},  {-2, 0, 4 / 42.f}, {-2, -1, 2 / 42.f}, {-1, -1, 4 / 42.f},
                              {0, -1, 8 / 42.f},  {1, -1, 4 / 42.f}, {2, -1, 2 / 42.f},  {-2, -2, 1 / 42.f},
                              {-1, -2, 2 / 42.f}, {0, -2, 4 / 42.f}, {1, -2, 2 / 42.f},  {2, -2, 1 / 42.f}};

template <class From, auto& taps, bool toBits>
Call bindDiffusion(const Image& source, const Image& destination) {
    constexpr float top = std::is_same_v<From, float> ? 1.f : sizeof(From) == 1 ? 255.f : 65535.f;
    constexpr int levels = toBits ? 2 : sizeof(From) == 1 ? 8 : 256;
    constexpr float step = top / (levels - 1);
    return [source, destination] {
        const int width = source.size.width, margin = 2;
        std::vector<float> errors[3];
        for (auto& row : errors) row.resize(static_cast<size_t>(width) + 2 * margin);
        for (int y = 0; y < source.size.height; ++y) {
            const auto* from = reinterpret_cast<const From*>(source.planes[0].data + ptrdiff_t{source.planes[0].step} * y);
            uint8_t* to = destination.planes[0].data + ptrdiff_t{destination.planes[0].step} * y;
            float* const rows[3] = {errors[y % 3].data() + margin, errors[(y + 2) % 3].data() + margin,
                                    errors[(y + 1) % 3].data() + margin};
            for (int x = 0; x < width; ++x) {
                float sum = from[x];
                [&]<size_t... i>(std::index_sequence<i...>) {
                    ((sum += rows[-taps[i].row][x + taps[i].column] * taps[i].weight), ...);
                }
                (std::make_index_sequence<std::size(taps)>());
                int level = static_cast<int>(sum * (1 / step) + 0.5f);
                level = level < 0 ? 0 : level >= levels ? levels - 1 : level;
                rows[0][x] = sum - static_cast<float>(level) * step;
                if (toBits)
                    to[x / 8] = static_cast<uint8_t>(x % 8 == 0 ? level << 7 : to[x / 8] | level << (7 - x % 8));
                else
                    to[x] = static_cast<uint8_t>(level * (255 / (levels - 1)));
            }
        }
        return 0;
    };
}

template <auto& taps>
void add(const Task& task, std::vector<Peer>& peers) {
    if (task.source.layout != Layout::gray) return;
    if (task.destination == Format(Layout::bits)) peers.push_back({"plain loop", bindDiffusion<uint8_t, taps, true>});
    if (task.destination != Format(Layout::gray)) return;
    if (task.source.depth == Depth::u8) peers.push_back({"plain loop", bindDiffusion<uint8_t, taps, false>});
    if (task.source.depth == Depth::u16) peers.push_back({"plain loop", bindDiffusion<uint16_t, taps, false>});
    if (task.source.depth == Depth::f32) peers.push_back({"plain loop", bindDiffusion<float, taps, false>});
}

}  // namespace

void addPlainLoops(const Task& task, std::vector<Peer>& peers) {
    if (task.variant == Variant::floydSteinberg) add<floydSteinbergTaps>(task, peers);
    if (task.variant == Variant::jarvisJudiceNinke) add<jarvisJudiceNinkeTaps>(task, peers);
    if (task.variant == Variant::stucki) add<stuckiTaps>(task, peers);
}

}  // namespace bench
