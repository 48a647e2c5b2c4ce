#include "frame420.h"

#include <fstream>
#include <stdexcept>

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
