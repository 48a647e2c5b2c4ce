// Binding of a C function to a pair of images. Conversion functions list their arguments in one order: planes and steps of the
// source, planes and steps of the destination, the size, and what else they take. So the types alone tell what each parameter
// stands for, and a function needs no description beyond its name.
#pragma once

#include <functional>
#include <tuple>
#include <type_traits>
#include <utility>

#include "image.h"
#include "library.h"
#include "zelcc.h"

namespace bench {

// One conversion of a source into a destination. 0 is success.
using Call = std::function<int()>;
using Bind = Call (*)(const Image& source, const Image& destination);

// What functions take by pointer behind the size: the weights of gray, and the first row of a matrix that also mixes the other
// channels and keeps the fourth.
template <class Number>
inline constexpr Number parameters[16] = {
    Number(0.299), Number(0.587), Number(0.114), 0, Number(0.1), Number(0.8), Number(0.1), 0,
    Number(0.1),   Number(0.1),   Number(0.8),   0, 0,           0,           0,           1};

namespace detail {

// One side of a call, in the forms in which functions take it. Plane arrays point into this record, so it must stay in place.
template <class Byte>
struct Side {
    std::array<Byte*, 4> planes{};
    std::array<int32_t, 4> steps{};
    size_t next = 0;

    explicit Side(const Image& image) {
        for (size_t i = 0; i < planes.size(); ++i) planes[i] = image.planes[i].data, steps[i] = image.planes[i].step;
    }
};

template <class... Extras>
class Arguments {
  public:
    Arguments(const Image& source, const Image& destination, Extras... extras)
        : source_(source), destination_(destination), size_(source.size), extras_(extras...) {}
    Arguments(const Arguments&) = delete;

    template <class T>
    T take() {
        using Target = std::remove_cv_t<std::remove_pointer_t<T>>;
        if constexpr ((std::is_same_v<T, Extras> || ...)) {
            return std::get<T>(extras_);
        } else if constexpr (std::is_same_v<T, const int32_t*>) {
            return steps_;
        } else if constexpr (std::is_pointer_v<Target>) {
            if constexpr (isConst<Target>)
                return reinterpret_cast<T>(takePlanes(source_));
            else
                return reinterpret_cast<T>(takePlanes(destination_));
        } else if constexpr (std::is_pointer_v<T> && isConst<T>) {
            if (sizeIsTaken_) return static_cast<T>(parameters<Target>);
            return reinterpret_cast<T>(takePlane(source_));
        } else if constexpr (std::is_pointer_v<T>) {
            return reinterpret_cast<T>(takePlane(destination_));
        } else if constexpr (std::is_same_v<T, ZelSize>) {
            sizeIsTaken_ = true;
            return {size_.width, size_.height};
        } else if constexpr (std::is_same_v<T, int32_t>) {
            return takeInteger();
        } else if constexpr (std::is_same_v<T, float>) {
            return std::exchange(lowerEndIsTaken_, true) ? 1.0f : 0.0f;
        } else {
            static_assert(std::is_integral_v<T>, "a parameter that no rule covers: pass it as an extra");
            return static_cast<T>(-1);
        }
    }

  private:
    template <class Pointer>
    static constexpr bool isConst = std::is_const_v<std::remove_pointer_t<Pointer>>;

    template <class Byte>
    Byte* takePlane(Side<Byte>& side) {
        const size_t plane = side.next++;
        steps_ = &side.steps[plane];
        stepIsNext_ = true;
        return side.planes[plane];
    }

    template <class Byte>
    Byte* const* takePlanes(Side<Byte>& side) {
        steps_ = side.steps.data();
        stepIsNext_ = true;
        return side.planes.data();
    }

    // A step follows its plane; the integers after the last step are width and height. One behind the size as a record says
    // which slice of an image is converted: all of it.
    int32_t takeInteger() {
        if (sizeIsTaken_) return zelSliceTop | zelSliceMiddle | zelSliceBottom;
        if (std::exchange(stepIsNext_, false)) return *steps_;
        return std::exchange(widthIsNext_, false) ? size_.width : size_.height;
    }

    Side<const uint8_t> source_;
    Side<uint8_t> destination_;
    Size size_;
    std::tuple<Extras...> extras_;
    const int32_t* steps_ = nullptr;
    bool stepIsNext_ = false;
    bool widthIsNext_ = true;
    bool sizeIsTaken_ = false;
    bool lowerEndIsTaken_ = false;
};

template <class Result, class... Parameters, class... Extras>
Call bind(Result (*function)(Parameters...), const Image& source, const Image& destination, Extras... extras) {
    const auto arguments = std::make_shared<Arguments<Extras...>>(source, destination, extras...);
    // Braces, because they fix the order in which the arguments are taken.
    const std::tuple<Parameters...> values{arguments->template take<Parameters>()...};
    return [function, values, owner = arguments]() -> int {
        if constexpr (std::is_void_v<Result>) {
            std::apply(function, values);
            return 0;
        } else {
            return std::apply(function, values);
        }
    };
}

}  // namespace detail

template <auto function>
Call bind(const Image& source, const Image& destination) {
    return detail::bind(bound(function), source, destination);
}

}  // namespace bench
