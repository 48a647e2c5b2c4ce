#include "frame420.h"

#include <cstddef>
#include <fstream>
#include <stdexcept>

Frame420::Frame420(ZelSize pictureSize)
    : size{pictureSize.width & ~1, pictureSize.height & ~1}, steps{size.width, size.width / 2, size.width / 2} {
    const std::size_t luma = std::size_t(size.width) * std::size_t(size.height);
    // Never without memory: what is wrong with a picture smaller than a site is its size, not a null pointer.
    for (std::vector<uint8_t>& plane : samples) plane.reserve(1);
    samples[0].resize(luma);
    samples[1].resize(luma / 4);
    samples[2].resize(luma / 4);
}

std::array<const uint8_t*, 3> Frame420::planes() const { return {samples[0].data(), samples[1].data(), samples[2].data()}; }

std::array<uint8_t*, 3> Frame420::planes() { return {samples[0].data(), samples[1].data(), samples[2].data()}; }

void writeY4m(const std::string& path, const Frame420& frame) {
    std::ofstream file(path, std::ios::binary);
    // "420jpeg" stands for chroma in the centre of its four pixels, which is where a plain average puts it.
    file << "YUV4MPEG2 W" << frame.size.width << " H" << frame.size.height
         << " F25:1 Ip A1:1 C420jpeg XCOLORRANGE=LIMITED\nFRAME\n";
    for (const std::vector<uint8_t>& plane : frame.samples)
        file.write(reinterpret_cast<const char*>(plane.data()), std::streamsize(plane.size()));
    file.close();
    if (!file) throw std::runtime_error(path + ": cannot be written");
}
