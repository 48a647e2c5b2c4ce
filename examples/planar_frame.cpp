#include "planar_frame.h"

#include <cstddef>

PlanarFrame::PlanarFrame(ZelSize frameSize, ZelSize site)
    : size{frameSize}, steps{size.width, size.width / site.width, size.width / site.width} {
    const std::size_t luma = std::size_t(size.width) * std::size_t(size.height);
    const std::size_t chroma = luma / std::size_t(site.width) / std::size_t(site.height);
    // Never without memory: what is wrong with a picture smaller than a site is its size, not a null pointer.
    for (std::vector<uint8_t>& plane : samples) plane.reserve(1);
    samples[0].resize(luma);
    samples[1].resize(chroma);
    samples[2].resize(chroma);
}

std::array<const uint8_t*, 3> PlanarFrame::planes() const { return {samples[0].data(), samples[1].data(), samples[2].data()}; }

std::array<uint8_t*, 3> PlanarFrame::planes() { return {samples[0].data(), samples[1].data(), samples[2].data()}; }
