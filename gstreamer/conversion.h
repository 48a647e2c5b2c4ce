// The conversion of the frames of a stream: what is planned once for its caps, and done for each frame by any number of threads.
#pragma once

#include <gst/video/video.h>

#include <array>
#include <vector>

#include "tools/workers.h"
#include "zelvideo.h"

namespace zelconvert {

enum Demosaic { demosaicBilinear, demosaicAhd };

struct Image {
    std::array<uint8_t*, 4> planes{};
    std::array<int32_t, 4> steps{};
    ZelSize size{};
};

struct Mosaic {
    int32_t grid = -1;  // ZelBayerGrid
    ZelSize size{};
};

class Conversion {
  public:
    // False where the library refuses one of the sides.
    bool plan(const GstVideoInfo& in, const GstVideoInfo& out, const ZelvOptions& options);
    // From a mosaic, to RGB of any format.
    bool plan(const Mosaic& in, const GstVideoInfo& out, Demosaic demosaic, const ZelvOptions& options);

    void convert(const GstVideoFrame& in, GstVideoFrame& out, tool::Workers& workers) const;
    void convert(const uint8_t* mosaic, int32_t step, GstVideoFrame& out, tool::Workers& workers);

  private:
    void demosaic(const uint8_t* mosaic, int32_t step, const Image& out, const ZelRect& region,
                  std::vector<uint8_t>& scratch) const;

    ZelvPlan plan_{};
    bool bySites_ = false;  // of two rows
    Mosaic mosaic_;
    Demosaic demosaic_ = demosaicBilinear;
    bool isRgb24_ = false;                       // the mosaic's function writes the destination itself
    std::vector<std::vector<uint8_t>> scratch_;  // of each worker
};

}  // namespace zelconvert
