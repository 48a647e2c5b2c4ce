#include "zelcc/version.h"

namespace {

constexpr char version[] = "8.2.2 (r46212)";
constexpr char buildDate[] = "Apr  1 2015";  // the day has two blanks before it, in the style of __DATE__

constexpr ZelLibraryVersion ssse3Version{8, 2, 2, 46212, {'v', '8'}, "zelCC SSSE3 (v8)", version, buildDate};
constexpr ZelLibraryVersion lumeVersion{8, 2, 2, 46212, {'s', '8'}, "zelCC Lume (s8)", version, buildDate};

const ZelLibraryVersion* getSsse3Version() { return &ssse3Version; }
const ZelLibraryVersion* getLumeVersion() { return &lumeVersion; }

}  // namespace

extern "C" {
using Query = const ZelLibraryVersion* (*)();
extern const Query zel_ssse3_version[];
extern const Query zel_s8_version[];
const Query zel_ssse3_version[] = {getSsse3Version};
const Query zel_s8_version[] = {getLumeVersion};
}
