// From the argument list of an export to its images and extras. Exports have their arguments in one order: the
// source, the destination, the size and then what the family adds, so the types of a public declaration say what each argument
// is.
#pragma once

#include <type_traits>

#include "frame/passes.h"
#include "simd/vector.h"
#include "zelcc/types.h"

namespace zel {

using Implementation = void (*)();

// What a level has in the place of an export: a conversion that is data, or a function of its own, by a pointer to it.
struct OfLevel {
    const void* conversionOrFunction;
    int leastWidth = 1;  // of images whose rows have a block
};

}  // namespace zel

namespace zel::ZEL_FRAME {

// An element of 2 or 4 bytes gives the step its grain: the bits below are lost, of negative steps too. With doubles, steps count
// as given.
template <class Element>
constexpr ptrdiff_t rowBytes(int32_t step) {
    return sizeof(Element) == 8 ? step : step & -static_cast<int32_t>(sizeof(Element));
}

// How the images of a conversion are read.
struct Reading {
    int sourcePlanes = 3, destinationPlanes = 3;  // of an array of planes
    int requiredPlanes = 4;                       // of the destination; those behind may be null, and are taken as they are
    bool cutsSteps = true;                        // steps, down to whole elements
};

constexpr int planesOf(const Layout& layout) {
    int planes = 3;
    for (int i = 0; i < layout.count; ++i)
        if (layout.streams[i].plane >= planes) planes = layout.streams[i].plane + 1;
    return planes;
}

template <class C>
constexpr Reading readingOf(const C& c) {
    Reading reading;
    if constexpr (std::is_base_of_v<Conversion, C>) reading = {planesOf(c.from), planesOf(c.to)};
    if constexpr (requires { C::requiredPlanes; }) reading.requiredPlanes = C::requiredPlanes;
    if constexpr (requires { C::takesStepsAsGiven; }) reading.cutsSteps = !C::takesStepsAsGiven;
    return reading;
}

template <Reading reading>
class Arguments {
  public:
    // The images are a record of their own, for it alone has to be in memory.
    template <class... A>
    ZEL_INLINE explicit Arguments(Images& images, A... a) : images_(images) {
        read(a...);
    }

    ZEL_INLINE bool hasNullPointer() const { return nullPointer_; }
    ZEL_INLINE bool hasNullPlane() const { return nullPlane_; }
    ZEL_INLINE bool hasStepBelow1() const { return stepBelow1_; }
    ZEL_INLINE ZelSize size() const { return images_.size; }

  private:
    template <class Argument>
    static constexpr bool isStep = std::is_same_v<Argument, int32_t> || std::is_same_v<Argument, const int32_t*>;

    // A plane or an array of planes, with a step for each or one for all. Two single planes on a side are luma and interleaved
    // chroma. Where no step follows, the conversion knows how far apart the rows are.
    template <class Pointer, class Next, class... Rest>
    ZEL_INLINE void read(Pointer* pointer, Next next, Rest... rest) {
        if constexpr (isStep<Next>) {
            addImage(pointer, next);
            read(rest...);
        } else {
            addImage(pointer, int32_t{0});
            read(next, rest...);
        }
    }
    // An image that can be written and has no other beside it is source and destination.
    template <class... Extras>
    ZEL_INLINE void read(ZelSize size, Extras...) {
        images_.size = size;
        if (sources_ != 0) return;
        for (int i = 0; i < destinations_; ++i) {
            images_.source[i] = images_.destination[i];
            images_.sourceStep[i] = images_.destinationStep[i];
        }
    }

    template <class Pointer, class Steps>
    ZEL_INLINE void addImage(Pointer pointer, Steps steps) {
        if constexpr (std::is_pointer_v<std::remove_pointer_t<Pointer>>) {
            using Element = std::remove_pointer_t<std::remove_pointer_t<Pointer>>;
            constexpr int planes = std::is_const_v<Element> ? reading.sourcePlanes : reading.destinationPlanes;
            const bool present = pointer && isPresent(steps);
            nullPointer_ |= !present;
            if (!present) return;
#pragma GCC unroll 4
            for (int i = 0; i < planes; ++i) {
                nullPlane_ |= i < reading.requiredPlanes && !pointer[i];
                add(pointer[i], stepOf(steps, i));
            }
        } else {
            nullPointer_ |= !pointer;
            add(pointer, steps);
        }
    }

    ZEL_INLINE static bool isPresent(int32_t) { return true; }
    ZEL_INLINE static bool isPresent(const int32_t* steps) { return steps; }
    ZEL_INLINE static int32_t stepOf(int32_t step, int) { return step; }
    ZEL_INLINE static int32_t stepOf(const int32_t* steps, int i) { return steps[i]; }

    template <class Element>
    ZEL_INLINE void add(const Element* plane, int32_t step) {
        images_.source[sources_] = reinterpret_cast<const uint8_t*>(plane);
        images_.sourceStep[sources_++] = taken<Element>(step);
    }
    template <class Element>
    ZEL_INLINE void add(Element* plane, int32_t step) {
        images_.destination[destinations_] = reinterpret_cast<uint8_t*>(plane);
        images_.destinationStep[destinations_++] = taken<Element>(step);
    }

    template <class Element>
    ZEL_INLINE ptrdiff_t taken(int32_t step) {
        stepBelow1_ |= step < 1;
        return reading.cutsSteps ? rowBytes<Element>(step) : step;
    }

    Images& images_;
    int sources_ = 0, destinations_ = 0;
    bool nullPointer_ = false, nullPlane_ = false, stepBelow1_ = false;
};

// What stands behind the size.
template <class Extras, class First, class... Rest>
ZEL_INLINE Extras extrasOf(First, Rest... rest) {
    if constexpr (std::is_same_v<First, ZelSize>)
        return Extras{rest...};
    else
        return extrasOf<Extras>(rest...);
}

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

// What all exports do with their arguments.
template <const auto& conversion>
class Checked {
    using C = std::remove_cvref_t<decltype(conversion)>;
    using Extras = typename C::Extras;

  public:
    // The status of convertThem(images, extras), which is called if nothing is wrong.
    template <class Convert, class... A>
    ZEL_INLINE static ZelStatus call(const Convert& convertThem, A... a) {
        Images images;
        Arguments<readingOf(conversion)> arguments(images, a...);
        const Extras extras = extrasOf<Extras>(a...);
        if (const ZelStatus error = firstError<0>(arguments, extras); error != zelStsNoErr) return error;
        return convertThem(images, extras);
    }

    // The conversion is the one that is checked, of some level. Only what needs memory can fail.
    ZEL_INLINE static ZelStatus converted(const C& c, Images& images, const Extras& extras) {
        const ZelSize size = images.size;
        if constexpr (std::is_same_v<decltype(convert(c, images, extras)), ZelStatus>)
            return convert(c, images, extras);
        else
            convert(c, images, extras);
        return conversion.oddSize == OddSize::warned && hasOddSize(conversion, size) ? zelStsOddSizeWarn : zelStsNoErr;
    }

  private:
    template <int i, Reading reading>
    ZEL_INLINE static ZelStatus firstError(Arguments<reading>& arguments, const Extras& extras) {
        constexpr Checks checks = conversion.checks;
        if constexpr (i < maxChecks && checks.list[i] != Check::none) {
            const ZelStatus error = errorOf<checks.list[i]>(arguments, extras);
            return error != zelStsNoErr ? error : firstError<i + 1>(arguments, extras);
        } else {
            return zelStsNoErr;
        }
    }

    template <Check check, Reading reading>
    ZEL_INLINE static ZelStatus errorOf(Arguments<reading>& arguments, const Extras& extras) {
        const ZelSize size = arguments.size();
        if constexpr (check == Check::pointers) {
            bool isNull = arguments.hasNullPointer();
            if constexpr (requires { extras.hasNullPointer(); }) isNull |= extras.hasNullPointer();
            return isNull ? zelStsNullPtrErr : zelStsNoErr;
        } else if constexpr (check == Check::planes) {
            return arguments.hasNullPlane() ? zelStsNullPtrErr : zelStsNoErr;
        } else if constexpr (check == Check::size) {
            return isRefused(conversion, size) ? zelStsSizeErr : zelStsNoErr;
        } else if constexpr (check == Check::empty) {
            return size.width < 1 || size.height < 1 ? zelStsSizeErr : zelStsNoErr;
        } else if constexpr (check == Check::steps) {
            return arguments.hasStepBelow1() ? zelStsStepErr : zelStsNoErr;
        } else {
            return extras.check();
        }
    }
};

}  // namespace zel::ZEL_FRAME

namespace zel::ZEL_LEVEL {

// A function with the signature of an export, and whether rows are shorter than a block for what it is given.
template <class... A>
struct ByLevel {
    ZelStatus (*convert)(A...);
    bool (*hasShortRows)(A...);
};
template <class... A>
ByLevel(ZelStatus (*)(A...), bool (*)(A...)) -> ByLevel<A...>;

// A conversion as the level's table has it. The few of a column aren't worth drivers.
template <const auto& conversion>
constexpr const auto& inTable() {
    if constexpr (traits.drivesByShape && !ZEL_IS_COLUMN)
        return driven<conversion>;
    else
        return conversion;
}

// The public layer of what the level has in a way of its own. Images whose rows are shorter than a block are left to a level with
// shorter ones.
template <const auto& conversion, const OfLevel* narrower, int place, class Signature>
struct Own;
template <const auto& conversion, const OfLevel* narrower, int place, class... A>
struct Own<conversion, narrower, place, ZelStatus(A...)> {
    using Function = ZelStatus (*)(A...);

    static ZelStatus call(A... a) {
        using C = std::remove_cvref_t<decltype(conversion)>;
        const auto byNarrower = [&]() ZEL_INLINE_LAMBDA {
            return (*static_cast<const Function*>(narrower[place].conversionOrFunction))(a...);
        };
        if constexpr (std::is_same_v<C, Function>) {
            return conversion(a...);
        } else if constexpr (std::is_same_v<C, ByLevel<A...>>) {
            if constexpr (narrower != nullptr) {
                if (conversion.hasShortRows(a...)) return byNarrower();
            }
            return conversion.convert(a...);
        } else {
            return Checked<conversion>::call(
                [&](Images& images, const typename C::Extras& extras) ZEL_INLINE_LAMBDA {
                    constexpr const auto& c = inTable<conversion>();
                    if constexpr (narrower != nullptr) {
                        if (images.size.width < vectorBytes && !isOneRow(c, images)) return byNarrower();
                    }
                    return Checked<conversion>::converted(c, images, extras);
                },
                a...);
        }
    }

    static constexpr Function function = call;
};

template <const auto& conversion, const OfLevel* narrower, int place, class Signature>
constexpr OfLevel ofLevel() {
    if constexpr (isData<std::remove_cvref_t<decltype(conversion)>>) {
        constexpr int ofBlock = leastWidth(conversion), least = ofBlock > vectorBytes ? ofBlock : vectorBytes;
        return {&inTable<conversion>(), narrower == nullptr ? 1 : least};
    } else {
        return {&Own<conversion, narrower, place, Signature>::function};
    }
}

}  // namespace zel::ZEL_LEVEL
