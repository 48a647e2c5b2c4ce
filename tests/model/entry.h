// Calls exports of any signature in one way. The order and kind of the arguments are read off the function's type.
#pragma once

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

struct Call {
    Operand source, destination;
    ZelSize size{};
    uint8_t alpha = 0;
    int32_t slice = 0;
    int nullArgument = -1;  // the pointer argument to pass as null, counted from the left
};

// Deals out the arguments from left to right: a plane pointer takes the next plane of its side, an array all of them, and a
// step belongs to what came last. Pointers to constants are the source's. A number behind the size names the slice.
class Arguments {
  public:
    explicit Arguments(const Call& call) : call_(call) {}

    template <class P>
    P next() {
        if constexpr (std::is_same_v<P, ZelSize>) {
            isSizePassed_ = true;
            return call_.size;
        } else if constexpr (std::is_same_v<P, uint8_t>) {
            return call_.alpha;
        } else if constexpr (std::is_same_v<P, int32_t>) {
            return isSizePassed_ ? call_.slice : side_->steps[plane_];
        } else if constexpr (std::is_same_v<P, const int32_t*>) {
            return isNull() ? nullptr : side_->steps.data();
        } else {
            using Pointee = std::remove_pointer_t<P>;
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

    const Call& call_;
    const Operand* side_ = nullptr;
    int plane_ = 0;
    int pointers_ = 0;
    bool isSizePassed_ = false;
};

struct Entry {
    ZelStatus (*call)(const Call&);
    int pointerArguments;
    bool takesAlpha;
};

template <class... P>
ZelStatus invoke(ZelStatus (*function)(P...), const Call& call) {
    Arguments arguments(call);
    std::tuple<P...> list{arguments.next<P>()...};  // braces fix the order
    return std::apply(function, list);
}

template <class... P>
constexpr Entry entryOf(ZelStatus (*)(P...), ZelStatus (*call)(const Call&)) {
    return {call, (0 + ... + std::is_pointer_v<P>), (false || ... || std::is_same_v<P, uint8_t>)};
}

}  // namespace model

// The first two members of a row of exports.
#define NAMED(function) #function, model::entryOf(function, [](const model::Call& call) { return model::invoke(function, call); })
