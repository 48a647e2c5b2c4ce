// The real zelcore, whose functions this program otherwise replaces.
#include "zelcore.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "harness/features.h"

namespace {

class Zelcore : public testing::Test {
  protected:
    void SetUp() override {
        library_ = dlopen("libzelcore.so.8", RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library_, nullptr) << dlerror();
    }
    void TearDown() override {
        if (library_) dlclose(library_);
    }

    template <class Function>
    Function* find(Function&, const char* name) {
        return reinterpret_cast<Function*>(dlsym(library_, name));
    }

    void* library_ = nullptr;
};

TEST_F(Zelcore, AllocatesOnBoundariesOf64Bytes) {
    const auto allocate = find(zelMalloc, "zelMalloc");
    const auto release = find(zelFree, "zelFree");
    ASSERT_TRUE(allocate && release);
    ASSERT_NE(allocate, &zelMalloc);
    for (const int32_t bytes : {1, 63, 64, 65, 4096, 1000003}) {
        void* memory = allocate(bytes);
        ASSERT_NE(memory, nullptr) << bytes;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(memory) % 64, 0u) << bytes;
        std::memset(memory, 255, static_cast<size_t>(bytes));
        release(memory);
    }
    for (const int32_t bytes : {0, -1, INT_MIN}) EXPECT_EQ(allocate(bytes), nullptr) << bytes;
    release(nullptr);
}

TEST_F(Zelcore, TellsTheLargestCacheOrNothing) {
    const auto largestCache = find(zelGetMaxCacheSizeB, "zelGetMaxCacheSizeB");
    ASSERT_TRUE(largestCache);
    constexpr int32_t untouched = -77;
    int32_t bytes = untouched;
    if (largestCache(&bytes) == 0) {
        EXPECT_GE(bytes, 16 << 10);
        EXPECT_EQ(bytes % 64, 0);
    } else {
        EXPECT_EQ(bytes, untouched);
    }
    EXPECT_NE(largestCache(nullptr), 0);
}

TEST_F(Zelcore, ReportsTheFeaturesOfTheProcessor) {
    const auto features = find(zelGetEnabledCpuFeatures, "zelGetEnabledCpuFeatures");
    ASSERT_TRUE(features);
    for (const uint64_t bit : {uint64_t{zelCpuSsse3}, uint64_t{zelCpuAvx2}, uint64_t{zelCpuAvx512}})
        EXPECT_EQ((features() & bit) != 0, harness::processorHas(bit)) << bit;
    EXPECT_EQ(features() & ~uint64_t{zelCpuSsse3 | zelCpuInOrder | zelCpuAvx2 | zelCpuAvx512}, 0u);
}

}  // namespace
