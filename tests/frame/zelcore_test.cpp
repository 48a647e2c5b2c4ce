// The real zelcore, whose functions this program otherwise replaces.
#include "zelcore.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "frame/levels.h"

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
    uint64_t selecting = 0;
    for (const zel::Level& level : zel::levels::all) selecting |= level.features;
#if defined(__x86_64__) || defined(__i386__)
    __builtin_cpu_init();
    EXPECT_EQ((features() & zelCpuSsse3) != 0, __builtin_cpu_supports("ssse3") != 0);
    EXPECT_EQ((features() & zelCpuAvx2) != 0, __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"));
    EXPECT_EQ((features() & zelCpuAvx512) != 0, __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                                                    __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
                                                    __builtin_cpu_supports("avx512vbmi"));
#else
    EXPECT_EQ(features() & zel::levels::lowest, zel::levels::lowest);
    selecting |= zelCpuDotProduct | zelCpuI8mm | zelCpuSve2;
#endif
    EXPECT_EQ(features() & ~selecting, 0u);
}

}  // namespace
