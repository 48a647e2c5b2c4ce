// Binding of a C function to a pair of 8-bit images. Conversion functions of other libraries list their arguments in one order:
// planes and steps of the source, planes and steps of the destination, width and height. So the types alone tell what each
// parameter stands for, and a function needs no description beyond its name.
#pragma once

#include <tuple>
#include <type_traits>
#include <utility>

#include "exports.h"

namespace bench {

namespace detail {

template <class... Extras>
class Arguments {
  public:
    Arguments(const Image& source, const Image& destination, Extras... extras)
        : source_(source), destination_(destination), extras_(extras...) {}

    template <class T>
    T take() {
        if constexpr ((std::is_same_v<T, Extras> || ...)) {
            return std::get<T>(extras_);
        } else if constexpr (std::is_same_v<T, const uint8_t*>) {
            return take(source_.planes[sourcePlane_++]);
        } else if constexpr (std::is_same_v<T, uint8_t*>) {
            return take(destination_.planes[destinationPlane_++]);
        } else {
            static_assert(std::is_same_v<T, int>, "a parameter that no rule covers: pass it as an extra");
            if (std::exchange(stepIsNext_, false)) return step_;
            return std::exchange(widthIsNext_, false) ? source_.size.width : source_.size.height;
        }
    }

  private:
    uint8_t* take(const Plane& plane) {
        step_ = plane.step;
        stepIsNext_ = true;
        return plane.data;
    }

    const Image &source_, &destination_;
    std::tuple<Extras...> extras_;
    size_t sourcePlane_ = 0, destinationPlane_ = 0;
    int step_ = 0;
    bool stepIsNext_ = false, widthIsNext_ = true;
};

template <class Result, class... Parameters, class... Extras>
Call bind(Result (*function)(Parameters...), const Image& source, const Image& destination, Extras... extras) {
    Arguments<Extras...> arguments(source, destination, extras...);
    // Braces, because they fix the order in which the arguments are taken.
    const std::tuple<Parameters...> values{arguments.template take<Parameters>()...};
    return [function, values]() -> int {
        if constexpr (!std::is_void_v<Result>) return std::apply(function, values);
        std::apply(function, values);
        return 0;
    };
}

}  // namespace detail

template <auto function>
Call bind(const Image& source, const Image& destination) {
    return detail::bind(function, source, destination);
}

}  // namespace bench
