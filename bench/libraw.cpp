#include <libraw/libraw.h>

#include <cstring>
#include <memory>
#include <vector>

#include "peers.h"

namespace bench {

namespace {

// Its step that makes three channels of every pixel, on 16-bit samples, with a copy of the result to the destination.
class Demosaicing : public LibRaw {
  public:
    explicit Demosaicing(const Image& source) : samples_(size_t(source.size.width) * size_t(source.size.height)) {
        const auto [width, height] = source.size;
        for (int y = 0; y < height; ++y) {
            const uint8_t* row = source.planes[0].data + ptrdiff_t{source.planes[0].step} * y;
            uint16_t* to = samples_.data() + size_t(y) * size_t(width);
            if (source.depth == Depth::u16)
                std::memcpy(to, row, size_t(width) * 2);
            else
                for (int x = 0; x < width; ++x) to[x] = row[x];
        }
        const auto bytes = static_cast<unsigned>(samples_.size() * 2);
        isOpen_ = open_bayer(reinterpret_cast<unsigned char*>(samples_.data()), bytes, ushort(width), ushort(height), 0, 0, 0, 0,
                             0, LIBRAW_OPENBAYER_RGGB, 0, 0, 0) == 0 &&
                  unpack() == 0 && raw2image() == 0;
        // The second green of the mosaic has a channel of its own until then.
        if (isOpen_) pre_interpolate();
    }

    int run(const Image& destination) {
        if (!isOpen_) return -1;
        ahd_interpolate();
        const size_t width = size_t(destination.size.width);
        for (int y = 0; y < destination.size.height; ++y) {
            const ushort(*pixels)[4] = imgdata.image + size_t(y) * width;
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

  private:
    std::vector<uint16_t> samples_;
    bool isOpen_;
};

Call bindDemosaicing(const Image& source, const Image& destination) {
    const auto demosaicing = std::make_shared<Demosaicing>(source);
    return [=] { return demosaicing->run(destination); };
}

}  // namespace

std::string libRawVersion() { return std::string("LibRaw ") + LibRaw::version(); }

void addLibRaw(const Task& task, std::vector<Peer>& peers) {
    if (task.variant == Variant::homogeneity) peers.push_back({"LibRaw ahd_interpolate", bindDemosaicing});
}

}  // namespace bench
