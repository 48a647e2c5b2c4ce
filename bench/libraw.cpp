#include <cstring>
#include <memory>
#include <vector>

#include "libraw_demosaicing.h"
#include "peers.h"

namespace bench {

namespace {

// On 16-bit samples, with a copy of the result to the destination.
std::vector<uint16_t> samplesOf(const Image& source) {
    const auto [width, height] = source.size;
    std::vector<uint16_t> samples(size_t(width) * size_t(height));
    for (int y = 0; y < height; ++y) {
        const uint8_t* row = source.planes[0].data + ptrdiff_t{source.planes[0].step} * y;
        uint16_t* to = samples.data() + size_t(y) * size_t(width);
        if (source.depth == Depth::u16)
            std::memcpy(to, row, size_t(width) * 2);
        else
            for (int x = 0; x < width; ++x) to[x] = row[x];
    }
    return samples;
}

int run(LibRawDemosaicing& demosaicing, const Image& destination) {
    if (!demosaicing.isOpen()) return -1;
    const ushort(*image)[4] = demosaicing.run();
    const size_t width = size_t(destination.size.width);
    for (int y = 0; y < destination.size.height; ++y) {
        const ushort(*pixels)[4] = image + size_t(y) * width;
        uint8_t* row = destination.planes[0].data + ptrdiff_t{destination.planes[0].step} * y;
        for (size_t i = 0; i < 3 * width; ++i) {
            const ushort sample = pixels[i / 3][i % 3];
            if (destination.depth == Depth::u16)
                std::memcpy(row + 2 * i, &sample, 2);
            else
                row[i] = static_cast<uint8_t>(sample);
        }
    }
    return 0;
}

Call bindDemosaicing(const Image& source, const Image& destination) {
    const auto demosaicing = std::make_shared<LibRawDemosaicing>(samplesOf(source), source.size.width, source.size.height,
                                                                 static_cast<unsigned char>(LIBRAW_OPENBAYER_RGGB));
    return [=] { return run(*demosaicing, destination); };
}

}  // namespace

std::string libRawVersion() { return std::string("LibRaw ") + LibRaw::version(); }

void addLibRaw(const Task& task, std::vector<Peer>& peers) {
    if (task.variant == Variant::homogeneity) peers.push_back({"LibRaw ahd_interpolate", bindDemosaicing});
}

}  // namespace bench
