// Calls exports of any signature in one way. The order and kind of the arguments are read off the function's type.
#pragma once

#include <dlfcn.h>

#include <array>
#include <cstdint>
#include <tuple>
#include <type_traits>

#include "zelcc/types.h"

namespace model {

struct Operand {
    std::array<uint8_t*, 4> planes{};
    std::array<int32_t, 4> steps{};
};

// What calls pass behind the size, beside an 8-bit alpha and a slice.
struct Parameters {
    bool hasCoefficients = false;       // or else a null pointer is passed
    std::array<double, 16> doubles{};   // the coefficients
    std::array<float, 16> floats{};     // the same, for exports that take floats
    std::array<float, 2> numbers{};     // floats by value, from left to right
    uint16_t word = 0;                  // 16-bit alpha
    std::array<int32_t, 3> integers{};  // integers, from left to right
    bool hasIntegers = false;           // or else an integer names the slice
};

constexpr Parameters withCoefficients(const std::array<double, 16>& coefficients) {
    Parameters p{.hasCoefficients = true, .doubles = coefficients};
    for (size_t i = 0; i < coefficients.size(); ++i) p.floats[i] = static_cast<float>(coefficients[i]);
    return p;
}

struct Call {
    Operand source, destination;
    ZelSize size{};
    uint8_t alpha = 0;
    int32_t slice = 0;
    Parameters parameters{};
    int nullArgument = -1;    // the pointer argument to pass as null, counted from the left
    void* library = nullptr;  // whose export is called: the program's own, or another copy of it
};

// Deals out the arguments from left to right: a plane pointer takes the next plane of its side, an array all of them, and a
// step belongs to what came last. Pointers to constants are the source's, and coefficients behind the size. What
// else stands there comes from the parameters.
class Arguments {
  public:
    explicit Arguments(const Call& call) : call_(call), parameters_(call.parameters) {}

    template <class P>
    P next() {
        if constexpr (std::is_same_v<P, ZelSize>) {
            isSizePassed_ = true;
            return call_.size;
        } else if constexpr (std::is_same_v<P, uint8_t>) {
            return call_.alpha;
        } else if constexpr (std::is_same_v<P, uint16_t> || std::is_same_v<P, int16_t>) {
            return static_cast<P>(call_.parameters.word);
        } else if constexpr (std::is_same_v<P, float>) {
            return call_.parameters.numbers[numbers_++];
        } else if constexpr (std::is_same_v<P, int32_t>) {
            if (!isSizePassed_) return side_->steps[plane_];
            return call_.parameters.hasIntegers ? call_.parameters.integers[integers_++] : call_.slice;
        } else if constexpr (std::is_same_v<P, const int32_t*>) {
            return isNull() ? nullptr : side_->steps.data();
        } else {
            using Pointee = std::remove_pointer_t<P>;
            if (isSizePassed_) return isNull() ? nullptr : reinterpret_cast<P>(coefficients<Pointee>());
            if constexpr (std::is_pointer_v<Pointee>) {
                select(std::is_const_v<std::remove_pointer_t<Pointee>>);
                return isNull() ? nullptr : reinterpret_cast<P>(side_->planes.data());
            } else {
                select(std::is_const_v<Pointee>);
                return isNull() ? nullptr : reinterpret_cast<P>(side_->planes[plane_]);
            }
        }
    }

  private:
    void select(bool source) {
        const Operand* side = source ? &call_.source : &call_.destination;
        plane_ = side == side_ ? plane_ + 1 : 0;
        side_ = side;
    }
    bool isNull() { return pointers_++ == call_.nullArgument; }

    template <class Pointee>
    void* coefficients() {
        if (!call_.parameters.hasCoefficients) return nullptr;
        if constexpr (std::is_same_v<std::remove_cv_t<std::remove_all_extents_t<Pointee>>, double>)
            return parameters_.doubles.data();
        return parameters_.floats.data();
    }

    const Call& call_;
    const Operand* side_ = nullptr;
    int plane_ = 0;
    int pointers_ = 0;
    int numbers_ = 0;
    int integers_ = 0;
    bool isSizePassed_ = false;
    Parameters parameters_;
};

struct Entry {
    ZelStatus (*call)(const Call&);
    int pointerArguments = 0;  // before the size
    bool takesCoefficients = false;
    bool takesAlpha = false;
    bool takesSteps = false;
    bool isInPlace = true;  // has no source
};

template <class... P>
ZelStatus invoke(ZelStatus (*function)(P...), const Call& call) {
    Arguments arguments(call);
    std::tuple<P...> list{arguments.next<P>()...};  // braces fix the order
    return std::apply(function, list);
}

// The export of another copy of the library than the program's.
template <class Function>
Function* inLibrary(void* library, const char* name, Function* ofProgram) {
    return library ? reinterpret_cast<Function*>(dlsym(library, name)) : ofProgram;
}

template <class... P>
constexpr Entry entryOf(ZelStatus (*)(P...), ZelStatus (*call)(const Call&)) {
    Entry entry{call};
    bool isSizePassed = false;
    const auto add = [&]<class T>(std::type_identity<T>) {
        if (std::is_same_v<T, ZelSize>) isSizePassed = true;
        if (std::is_same_v<T, uint8_t>) entry.takesAlpha = true;
        if (!isSizePassed && (std::is_same_v<T, int32_t> || std::is_same_v<T, const int32_t*>)) entry.takesSteps = true;
        if (!std::is_pointer_v<T>) return;
        if (isSizePassed)
            entry.takesCoefficients = true;
        else
            ++entry.pointerArguments;
        using Elements = std::remove_pointer_t<T>;
        const bool isRead =
            std::is_const_v<std::conditional_t<std::is_pointer_v<Elements>, std::remove_pointer_t<Elements>, Elements>>;
        if (!isSizePassed && isRead && !std::is_same_v<T, const int32_t*>) entry.isInPlace = false;
    };
    (add(std::type_identity<P>()), ...);
    return entry;
}

}  // namespace model

// The first two members of a row of exports.
#define NAMED(function)                                                                  \
#function, model::entryOf(function, [](const model::Call& call) {                    \
        return model::invoke(model::inLibrary(call.library, #function, function), call); \
    })
