// The exported entries as a program finds them, and the completeness of the tests' own tables.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "model/export.h"

namespace {

constexpr const char* names[] = {
#define ZEL_EXPORT(name, group, columns) #name,
#include "../../src/frame/exports.def"
#undef ZEL_EXPORT
};

TEST(Entries, AreExportedOnBoundariesOf16Bytes) {
    for (const char* name : names) {
        const void* entry = dlsym(RTLD_NEXT, name);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(entry) % 16, 0u) << name;
    }
}

TEST(Entries, AreAllTested) {
    std::set<std::string> untested(std::begin(names), std::end(names));
    untested.erase("zelccGetLibVersion");
    for (const auto exports : {model::lumachromaExports(), model::chromaExports()})
        for (const model::Export& e : exports) EXPECT_EQ(untested.erase(e.name), 1u) << e.name;
    EXPECT_EQ(untested, std::set<std::string>());
}

}  // namespace
