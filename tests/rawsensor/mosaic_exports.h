// The exports that convert mosaics, with one signature for all.
#pragma once

#include <iterator>
#include <ostream>
#include <string_view>

#include "model/entry.h"
#include "zelcc/rawsensor.h"

namespace harness {

struct MosaicCall {
    const void* source;
    ZelRect region;
    ZelSize size;
    int32_t sourceStep;
    void* destination;
    int32_t destinationStep, grid;
    void* buffer = nullptr;
    int32_t bufferStep = 0, interpolation = 0;
    void* library = nullptr;  // another copy than the program's
};

struct MosaicExport {
    const char* name;
    int elementBytes;
    bool isHomogeneous;  // and takes a buffer
    ZelStatus (*function)(const char* name, const MosaicCall&);

    ZelStatus call(const MosaicCall& c) const { return function(name, c); }
    int minimum() const { return isHomogeneous ? 5 : 2; }
    int highest() const { return elementBytes == 1 ? 255 : 65535; }
    // Of the buffer.
    static constexpr int bufferRows = 30;
    int bufferStep(int width) const { return (width + 6) * elementBytes; }
};

template <auto function, class Element>
ZelStatus callInterpolation(const char* name, const MosaicCall& c) {
    return model::inLibrary(c.library, name, function)(static_cast<const Element*>(c.source), c.region, c.size, c.sourceStep,
                                                       static_cast<Element*>(c.destination), c.destinationStep, c.grid,
                                                       c.interpolation);
}
template <auto function, class Element>
ZelStatus callDemosaicing(const char* name, const MosaicCall& c) {
    return model::inLibrary(c.library, name, function)(static_cast<const Element*>(c.source), c.region, c.size, c.sourceStep,
                                                       static_cast<Element*>(c.destination), c.destinationStep, c.grid, c.buffer,
                                                       c.bufferStep);
}

inline constexpr MosaicExport mosaicExports[] = {
    {"zeliCFAToRGB_8u_C1C3R", 1, false, callInterpolation<zeliCFAToRGB_8u_C1C3R, uint8_t>},
    {"zeliCFAToRGB_16u_C1C3R", 2, false, callInterpolation<zeliCFAToRGB_16u_C1C3R, uint16_t>},
    {"zeliDemosaicAHD_8u_C1C3R", 1, true, callDemosaicing<zeliDemosaicAHD_8u_C1C3R, uint8_t>},
    {"zeliDemosaicAHD_16u_C1C3R", 2, true, callDemosaicing<zeliDemosaicAHD_16u_C1C3R, uint16_t>},
};

inline const MosaicExport* findMosaicExport(std::string_view name) {
    for (const MosaicExport& e : mosaicExports)
        if (e.name == name) return &e;
    return nullptr;
}

inline void PrintTo(const MosaicExport& e, std::ostream* out) { *out << e.name; }

}  // namespace harness
