// Samples to where another format has them: by way of a row of each channel, taken apart and put together a block at a time.
#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

#include "catalog/colours.h"
#include "catalog/path.h"

namespace catalog {
namespace {

constexpr int blockUnits = 256;

template <typename T, int n>
void split(const T* __restrict from, T (*__restrict rows)[blockUnits], int count) {
    for (int i = 0; i < count; ++i)
        for (int j = 0; j < n; ++j) rows[j][i] = from[n * i + j];
}

template <typename T, int n>
void join(const T* const* rows, T* __restrict to, int count) {
    const T *const a = rows[0], *const b = rows[1 % n], *const c = rows[2 % n], *const d = rows[3 % n];
    for (int i = 0; i < count; ++i) {
        to[n * i] = a[i];
        if constexpr (n > 1) to[n * i + 1] = b[i];
        if constexpr (n > 2) to[n * i + 2] = c[i];
        if constexpr (n > 3) to[n * i + 3] = d[i];
    }
}

template <typename T>
void split(const T* from, int samples, T (*rows)[blockUnits], int count) {
    if (samples == 2) split<T, 2>(from, rows, count);
    if (samples == 3) split<T, 3>(from, rows, count);
    if (samples == 4) split<T, 4>(from, rows, count);
}

template <typename T>
void join(const T* const* rows, int samples, T* to, int count) {
    if (samples == 1) std::memcpy(to, rows[0], static_cast<size_t>(count) * sizeof(T));
    if (samples == 2) join<T, 2>(rows, to, count);
    if (samples == 3) join<T, 3>(rows, to, count);
    if (samples == 4) join<T, 4>(rows, to, count);
}

// A sample of a plane in so many pixels as the widest unit of both formats has.
struct Slot {
    std::string_view channel;
    int number;  // of the samples of its channel
};

std::vector<Slot> slotsOf(const Plane& plane, int pixels) {
    std::vector<Slot> slots;
    for (int unit = 0; unit < pixels / plane.width; ++unit)
        plane.forEachSample([&](std::string_view channel) {
            const auto before = std::ranges::count(slots, channel, &Slot::channel);
            slots.push_back({channel, static_cast<int>(before)});
        });
    return slots;
}

// For each sample of a target's plane, where it comes from: nowhere if it is an alpha that the source lacks.
struct Origin {
    int plane = -1, slot = 0;
};

template <typename T>
class Mover {
  public:
    Mover(const Format& source, const Side& from, const Format& target, const Side& to, ZelSize size, T alpha)
        : source_(source), from_(from), to_(to) {
        for (const Format* f : {&source, &target})
            for (const Plane& p : f->usedPlanes()) pixels_ = std::max(pixels_, p.width);
        for (int i = 0; i < source.planeCount; ++i) slots_[i] = slotsOf(source.planes[i], pixels_);
        for (T& sample : alpha_) sample = alpha;
        for (int i = 0; i < target.planeCount; ++i) origins_[i] = originsOf(slotsOf(target.planes[i], pixels_));
        const int units = (size.width + pixels_ - 1) / pixels_;
        // Planes of the same height together, so that a row of pixels is taken apart once.
        for (int first = 0; first < target.planeCount; ++first) {
            std::vector<int> alike;
            for (int i = 0; i < target.planeCount; ++i)
                if (target.planes[i].height == target.planes[first].height) alike.push_back(i);
            if (alike.front() != first) continue;
            for (int64_t y = 0; y < target.planes[first].rows(size.height); ++y)
                for (int unit = 0; unit < units; unit += blockUnits)
                    moveBlock(alike, y, unit, std::min(blockUnits, units - unit));
        }
    }

  private:
    std::vector<Origin> originsOf(const std::vector<Slot>& wanted) const {
        std::vector<Origin> origins(wanted.size());
        for (size_t i = 0; i < wanted.size(); ++i)
            for (int plane = 0; plane < source_.planeCount; ++plane)
                for (size_t slot = 0; slot < slots_[plane].size(); ++slot)
                    if (slots_[plane][slot].channel == wanted[i].channel && slots_[plane][slot].number == wanted[i].number)
                        origins[i] = {plane, static_cast<int>(slot)};
        return origins;
    }

    void moveBlock(const std::vector<int>& targets, int64_t y, int unit, int count) {
        T rows[4][4][blockUnits];
        bool isSplit[4] = {};
        for (const int target : targets) {
            const T* taken[4] = {};
            const int samples = static_cast<int>(origins_[target].size());
            for (int i = 0; i < samples; ++i) {
                const auto [plane, slot] = origins_[target][i];
                if (plane < 0) {
                    taken[i] = alpha_;
                    continue;
                }
                const int given = static_cast<int>(slots_[plane].size());
                const T* const block = rowOf(from_, plane, y) + static_cast<int64_t>(unit) * given;
                taken[i] = given == 1 ? block : rows[plane][slot];
                if (!isSplit[plane]) split(block, given, rows[plane], count);
                isSplit[plane] = true;
            }
            join(taken, samples, rowOf(to_, target, y) + static_cast<int64_t>(unit) * samples, count);
        }
    }

    static T* rowOf(const Side& side, int plane, int64_t y) {
        return reinterpret_cast<T*>(static_cast<uint8_t*>(side.planes[plane]) + y * side.steps[plane]);
    }

    const Format& source_;
    const Side &from_, &to_;
    int pixels_ = 1;
    std::vector<Slot> slots_[4];
    std::vector<Origin> origins_[4];
    T alpha_[blockUnits];
};

#ifdef CATALOG_OF_NUMBERS
// Which has no kernels.
bool moveByVideo(const Format&, const Side&, const Format&, const Side&, ZelSize) { return false; }
#else
bool moveByVideo(const Format& source, const Side& from, const Format& target, const Side& to, ZelSize size) {
    ZelvPlan plan;
    if (!isMovedByVideo(source, target) || makePlan(&plan, source, target, {}, {}) != zelStsNoErr) return false;
    const uint8_t* read[4];
    uint8_t* written[4];
    for (size_t i = 0; i < std::size(read); ++i) {
        read[i] = static_cast<const uint8_t*>(from.planes[i]);
        written[i] = static_cast<uint8_t*>(to.planes[i]);
    }
    return zelvConvert(&plan, read, from.steps.data(), written, to.steps.data(), size) == zelStsNoErr;
}
#endif

}  // namespace

bool isMovedByVideo(const Format& source, const Format& target) {
    const auto isDescribed = [](const Format& f) {
        return f.model == Model::rgb && f.description.depth >= 8 && f.description.depth <= 16;
    };
    // Which that library doesn't move.
    const auto hasUnused = [](const Format& f) {
        return std::string_view(f.description.components).find('X') != std::string_view::npos;
    };
    return isDescribed(source) && isDescribed(target) && !(hasUnused(source) && hasUnused(target)) &&
           source.description.depth == target.description.depth;
}

void rearrange(const Format& source, const Side& from, const Format& target, const Side& to, ZelSize size) {
    if (moveByVideo(source, from, target, to, size)) return;
    const auto move = [&](auto alpha) { Mover<decltype(alpha)>(source, from, target, to, size, alpha); };
    const uint64_t alpha = opaque(target.element);
    switch (bytesOf(target.element)) {
        case 1:
            return move(static_cast<uint8_t>(alpha));
        case 2:
            return move(static_cast<uint16_t>(alpha));
        case 4:
            return move(static_cast<uint32_t>(alpha));
        default:
            return move(alpha);
    }
}

}  // namespace catalog
