// LibRaw's step that makes three channels of every pixel of a mosaic.
#pragma once

#include <libraw/libraw.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace bench {

class LibRawDemosaicing : public LibRaw {
  public:
    LibRawDemosaicing(std::vector<uint16_t> samples, int width, int height, unsigned char pattern)
        : samples_(std::move(samples)) {
        const auto bytes = static_cast<unsigned>(samples_.size() * 2);
        isOpen_ = open_bayer(reinterpret_cast<unsigned char*>(samples_.data()), bytes, ushort(width), ushort(height), 0, 0, 0, 0,
                             0, pattern, 0, 0, 0) == 0 &&
                  unpack() == 0 && raw2image() == 0;
        // The second green of the mosaic has a channel of its own until then.
        if (isOpen_) pre_interpolate();
    }

    bool isOpen() const { return isOpen_; }

    // Red, green, blue and a channel of no use, pixel by pixel.
    const ushort (*run())[4] {
        ahd_interpolate();
        return imgdata.image;
    }

  private:
    std::vector<uint16_t> samples_;
    bool isOpen_;
};

}  // namespace bench
