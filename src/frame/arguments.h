// From the argument list of an export to the images of the call. All exports have their arguments in one order: the source, the
// destination, the size and then what the family adds, so the types of a public declaration say what each argument is.
#pragma once

#include <type_traits>

#include "frame/driver.h"
#include "simd/pixels.h"
#include "zelcc/types.h"

namespace zel {
using Implementation = void (*)();
}

namespace zel::ZEL_LEVEL {

// An element of 2 or 4 bytes gives the step its grain: the bits below are lost, of negative steps too. With doubles, steps count
// as given.
template <class Element>
constexpr ptrdiff_t rowBytes(int32_t step) {
    return sizeof(Element) == 8 ? step : step & -static_cast<int32_t>(sizeof(Element));
}

class Arguments {
  public:
    template <class... A>
    ZEL_INLINE explicit Arguments(A... a) {
        read(a...);
    }

    ZEL_INLINE bool hasNullPointer() const { return nullPointer_; }
    ZEL_INLINE bool hasNullPlane() const { return nullPlane_; }
    ZEL_INLINE bool hasStepBelow1() const { return stepBelow1_; }
    ZEL_INLINE bool hasEmptyRange() const { return 0.0f >= images_.upperEnd - images_.lowerEnd; }
    ZEL_INLINE Images& images() { return images_; }

  private:
    // A plane or an array of three planes, with a step for each or one for all. Two single planes on a side are luma and
    // interleaved chroma.
    template <class Pointer, class Steps, class... Rest>
    ZEL_INLINE void read(Pointer pointer, Steps steps, Rest... rest) {
        if constexpr (std::is_pointer_v<std::remove_pointer_t<Pointer>>) {
            const bool present = pointer && isPresent(steps);
            nullPointer_ |= !present;
            if (!present) return read(rest...);
#pragma GCC unroll 3
            for (int i = 0; i < 3; ++i) {
                nullPlane_ |= !pointer[i];
                add(pointer[i], stepOf(steps, i));
            }
        } else {
            nullPointer_ |= !pointer;
            add(pointer, steps);
        }
        read(rest...);
    }
    // An image that can be written and has no other beside it is source and destination.
    ZEL_INLINE void read(ZelSize size) {
        images_.size = size;
        if (sources_ != 0) return;
        for (int i = 0; i < destinations_; ++i) {
            images_.source[i] = images_.destination[i];
            images_.sourceStep[i] = images_.destinationStep[i];
        }
    }
    ZEL_INLINE void read(ZelSize size, uint8_t alpha) {
        read(size);
        images_.alpha = alpha;
    }
    ZEL_INLINE void read(ZelSize size, uint16_t alpha) {
        read(size);
        images_.alpha = alpha;
    }
    ZEL_INLINE void read(ZelSize size, float alpha) {
        read(size);
        images_.alpha = __builtin_bit_cast(uint32_t, alpha);
    }
    ZEL_INLINE void read(ZelSize size, int32_t slice) {
        read(size);
        images_.slice = slice;
    }
    template <class Number>
    ZEL_INLINE void read(ZelSize size, const Number* parameters) {
        read(size);
        images_.parameters = parameters;
    }
    ZEL_INLINE void read(ZelSize size, float lowerEnd, float upperEnd) {
        read(size);
        images_.lowerEnd = lowerEnd;
        images_.upperEnd = upperEnd;
    }

    ZEL_INLINE static bool isPresent(int32_t) { return true; }
    ZEL_INLINE static bool isPresent(const int32_t* steps) { return steps; }
    ZEL_INLINE static int32_t stepOf(int32_t step, int) { return step; }
    ZEL_INLINE static int32_t stepOf(const int32_t* steps, int i) { return steps[i]; }

    template <class Element>
    ZEL_INLINE void add(const Element* plane, int32_t step) {
        noteStep<Element>(step);
        images_.source[sources_] = reinterpret_cast<const uint8_t*>(plane);
        images_.sourceStep[sources_++] = rowBytes<Element>(step);
    }
    template <class Element>
    ZEL_INLINE void add(Element* plane, int32_t step) {
        noteStep<Element>(step);
        images_.destination[destinations_] = reinterpret_cast<uint8_t*>(plane);
        images_.destinationStep[destinations_++] = rowBytes<Element>(step);
    }

    template <class Element>
    ZEL_INLINE void noteStep(int32_t step) {
        stepBelow1_ |= step < 1;
        images_.stepsCut |= rowBytes<Element>(step) != step;
    }

    Images images_{};
    int sources_ = 0, destinations_ = 0;
    bool nullPointer_ = false, nullPlane_ = false, stepBelow1_ = false;
};

// A conversion of any kind has a site, a minimum, an attitude to odd sizes and an order of checks, and its own `convert`.
template <class C>
ZEL_INLINE bool hasOddSize(const C& c, ZelSize size) {
    return size.width % c.site.width != 0 || size.height % c.site.height != 0;
}

template <class C>
ZEL_INLINE bool isRefused(const C& c, ZelSize size) {
    return size.width < c.minimum.width || size.height < c.minimum.height ||
           (c.oddSize == OddSize::refused && hasOddSize(c, size));
}

// A conversion of several passes is one of several rows.
template <class C>
ZEL_INLINE bool isOneRow(const C& c, const Images& images) {
    if constexpr (std::is_base_of_v<Conversion, C>)
        return isOneRow(static_cast<const Conversion&>(c), images);
    else
        return false;
}

// Whether a null pointer to parameters is an error rather than a request for the family's own.
template <class C>
ZEL_INLINE bool needsParameters([[maybe_unused]] const C& c) {
    if constexpr (requires { c.needsParameters; })
        return c.needsParameters;
    else
        return false;
}

template <class C>
ZEL_INLINE const C& choose(const C& c, const Images&) {
    return c;
}
ZEL_INLINE const Conversion& choose(const ByAlignment& c, const Images& images) {
    uintptr_t bits = 0;
    for (int i = 0; i < 4; ++i) {
        bits |= reinterpret_cast<uintptr_t>(images.source[i]) | reinterpret_cast<uintptr_t>(images.destination[i]);
        bits |= uintptr_t(images.sourceStep[i]) | uintptr_t(images.destinationStep[i]);
    }
    return bits % 16 == 0 ? c.aligned : c.other;
}

// The public layer of a conversion: a function with the signature of its export.
template <const auto& conversion, class Signature>
struct Export;

template <const auto& conversion, class... A>
struct Export<conversion, ZelStatus(A...)> {
    // Images whose rows are shorter than a block are left to a level with shorter ones, which has them at the same place of its
    // table.
    template <const Implementation* narrower, int place>
    static ZelStatus call(A... a) {
        Arguments arguments(a...);
        Images& images = arguments.images();
        const ZelSize size = images.size;
        const auto& c = choose(conversion, images);
        const bool refused = isRefused(c, size), empty = size.width < 1 || size.height < 1;
        if (c.checks == Checks::rangeFirst && arguments.hasEmptyRange()) return zelStsRangeErr;
        if (c.checks == Checks::sizeFirst && refused) return zelStsSizeErr;
        if (c.checks == Checks::emptyFirst && empty) return zelStsSizeErr;
        if (arguments.hasNullPointer() || (needsParameters(c) && !images.parameters)) return zelStsNullPtrErr;
        if (c.checks == Checks::emptyBetween && empty) return zelStsSizeErr;
        const bool planesFirst = c.checks != Checks::pointersFirst && c.checks != Checks::sizeFirst;
        if (planesFirst && arguments.hasNullPlane()) return zelStsNullPtrErr;
        if (refused) return zelStsSizeErr;
        if (arguments.hasNullPlane()) return zelStsNullPtrErr;
        const bool stepsLast = c.checks == Checks::stepsLast || c.checks == Checks::rangeFirst;
        if (stepsLast && arguments.hasStepBelow1()) return zelStsStepErr;
        if constexpr (narrower != nullptr) {
            if (size.width < blockPixels && !isOneRow(c, images))
                return reinterpret_cast<ZelStatus (*)(A...)>(narrower[place])(a...);
        }
        // Only what needs memory can fail from here on.
        if constexpr (std::is_same_v<decltype(convert(c, images)), ZelStatus>)
            return convert(c, images);
        else
            convert(c, images);
        return c.oddSize == OddSize::warned && hasOddSize(c, size) ? zelStsOddSizeWarn : zelStsNoErr;
    }
};

}  // namespace zel::ZEL_LEVEL
