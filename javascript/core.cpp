// What the modules of functions don't have: memory for all of them, and the catalogue's ways between formats, by numbers of its
// lists.
#include <cstdlib>

#include "catalog/colours.h"

#define ZEL_MODULE(name) [[clang::export_name(#name)]]

// The C++ library's last words, for which there is no place to be said.
void std::__libcpp_verbose_abort(const char*, ...) { __builtin_trap(); }

void* operator new(size_t size) {
    void* const memory = std::malloc(size);
    return memory ? memory : (__builtin_trap(), nullptr);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }

namespace {

// Of source and target; ranges are 0 or 1 as in zelvideo.h, or -1 where nothing is said.
struct Said {
    int32_t matrix[2], range[2], location[2];

    catalog::Colour colour(int side) const {
        catalog::Colour c{.matrix = std::string(catalog::matrices()[matrix[side]].name), .location = location[side]};
        if (range[side] >= 0) c.isFullRange = range[side] == zelvFull;
        return c;
    }
    catalog::Colours colours() const { return {colour(0), colour(1)}; }
};

enum By { function, video, move };

struct Step {
    int32_t by, function, source, target;
};

struct Way {
    int32_t count, siteWidth, siteHeight;
    Step steps[16];
};

Way lastWay;
ZelvFormat lastSides[2];

}  // namespace

extern "C" {

ZEL_MODULE(allocate) void* allocate(size_t bytes) {
    void* memory = nullptr;
    return posix_memalign(&memory, 64, bytes) == 0 ? memory : nullptr;
}
ZEL_MODULE(release) void release(void* memory) { std::free(memory); }

// What the functions ask for.
ZEL_MODULE(zelMalloc) void* zelMalloc(int32_t bytes) { return bytes < 1 ? nullptr : allocate(static_cast<size_t>(bytes)); }
ZEL_MODULE(zelGetMaxCacheSizeB) int32_t zelGetMaxCacheSizeB(int32_t*) { return -1; }
ZEL_MODULE(zelFree) void zelFree(void* memory) { std::free(memory); }

// Null if no way leads there.
ZEL_MODULE(findWay) const Way* findWay(int32_t source, int32_t target, const Said* said, const char* method) {
    const auto formats = catalog::formats();
    const auto found = catalog::path(formats[source], formats[target], said->colours(), catalog::byMethod(method));
    if (!found || found->size() > std::size(lastWay.steps)) return nullptr;
    const catalog::Site site = catalog::wholeSites(*found);
    lastWay = {static_cast<int32_t>(found->size()), site.width, site.height, {}};
    for (size_t i = 0; i < found->size(); ++i) {
        const catalog::Step& step = (*found)[i];
        Step& made = lastWay.steps[i];
        made.by = step.conversion ? function : step.isByVideo ? video : move;
        made.function = step.conversion ? step.conversion->function : -1;
        made.source = catalog::numberOf(*step.source);
        made.target = catalog::numberOf(*step.target);
    }
    return &lastWay;
}

// Both sides as zelvMakePlan takes them; null if there is no description.
ZEL_MODULE(describe) const ZelvFormat* describe(int32_t source, int32_t target, const Said* said) {
    for (int side = 0; side < 2; ++side) {
        const auto made = catalog::describe(catalog::formats()[side ? target : source], said->colour(side));
        if (!made) return nullptr;
        lastSides[side] = *made;
    }
    return lastSides;
}

ZEL_MODULE(formatBytes) int32_t formatBytes() { return sizeof(ZelvFormat); }
ZEL_MODULE(planBytes) int32_t planBytes() { return sizeof(ZelvPlan); }

ZEL_MODULE(videoOptions) void videoOptions(const char* method, ZelvOptions* options) { *options = catalog::videoOptions(method); }

ZEL_MODULE(isMovedByVideo) bool isMovedByVideo(int32_t source, int32_t target) {
    return catalog::isMovedByVideo(catalog::formats()[source], catalog::formats()[target]);
}

ZEL_MODULE(rearrange)
void rearrange(int32_t source, const catalog::Side* from, int32_t target, const catalog::Side* to, int32_t width,
               int32_t height) {
    catalog::rearrange(catalog::formats()[source], *from, catalog::formats()[target], *to, {width, height});
}

// The end of a sentence about a word that is none of these names, which stand in lines.
ZEL_MODULE(suggest) const char* suggest(const char* word, const char* lines) {
    static std::string text;
    std::vector<std::string_view> names;
    for (std::string_view rest = lines; !rest.empty();) {
        const size_t end = std::min(rest.find('\n'), rest.size());
        names.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    text = catalog::suggestion(word, names);
    return text.c_str();
}
}
