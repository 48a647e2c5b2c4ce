#include "zelcc/version.h"

namespace {

constexpr char version[] = "8.2.2 (r46212)";
constexpr char buildDate[] = "Apr  1 2015";  // the day has two blanks before it, in the style of __DATE__

#define ZEL_CLASS(level, cpu, text)                                                                                    \
    constexpr ZelLibraryVersion level##Version{8, 2, 2, 46212, #cpu, "zelCC " text " (" #cpu ")", version, buildDate}; \
    const ZelLibraryVersion* level##Query() { return &level##Version; }
#include "levels.def"

}  // namespace

extern "C" {
using Query = const ZelLibraryVersion* (*)();
#define ZEL_CLASS(level, cpu, text)             \
    extern const Query zel_##level##_version[]; \
    const Query zel_##level##_version[] = {level##Query};
#include "levels.def"
}
