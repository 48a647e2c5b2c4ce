// What calls ask of the machine, and many of them at once.
#include <thread>

#include "harness/conversion_test.h"
#include "harness/machine.h"

namespace harness {
namespace {

bool isReduction(const model::Export& tested) { return std::string_view(tested.name).starts_with("zeliReduceBits"); }

// 65537 samples or more, of three channels.
constexpr ZelSize largeImage{1024, 32};

bool asksForMemory(const model::Export& tested, const model::Parameters& p) {
    const std::string_view name = tested.name;
    if (name.starts_with("zeliGammaFwd_16u") || name.starts_with("zeliGammaInv_16u")) return true;
    const auto [noise, dither, levels] = p.integers;
    return isReduction(tested) && (dither == zelDitherBayer ? noise > 0 : dither > 0 && dither < zelDitherBayer);
}

TEST_P(Conversion, AsksForMemoryOnlyWhereItIsSaid) {
    std::span<const model::Parameters> parameters = tested().parameters;
    const model::Parameters none{};
    if (parameters.empty()) parameters = {&none, 1};
    for (const model::Parameters& p : parameters) {
        const FreshMachine fresh;
        Random random(seed());
        const auto [source, destination] = lay(largeImage, {aligned, aligned}, random, Content::uniform);
        const ZelStatus status = tested().entry.call({.source = source.operand(),
                                                      .destination = destination.operand(),
                                                      .size = largeImage,
                                                      .slice = tested().slice.argument,
                                                      .parameters = p});
        ASSERT_GE(status, zelStsNoErr);
        EXPECT_EQ(machine.requests > 0, asksForMemory(tested(), p));
        EXPECT_EQ(machine.blocksInUse, 0);
    }
}

// Four threads convert one source at a time to destinations of their own, as often as it takes to meet; in place one each.
TEST_P(Conversion, GivesTheSameInSeveralThreads) {
    constexpr ZelSize size{76, 16};
    constexpr int count = 4;
    Random random(seed());
    const Pictures pictures = lay(size, {aligned, aligned}, random, Content::uniform);
    const Picture& destination = pictures.destination;
    const auto convert = [&](const Picture& to) {
        const model::Export& tested = *GetParam();
        return tested.entry.call({.source = tested.entry.isInPlace ? to.operand() : pictures.source.operand(),
                                  .destination = to.operand(),
                                  .size = size,
                                  .slice = tested.slice.argument,
                                  .parameters = tested.firstParameters()});
    };
    const auto copy = [](const Picture& from, const Picture& to) {
        for (int k = 0; k < from.layout->planeCount; ++k) std::ranges::copy(from.planes[k].memory, to.planes[k].memory.begin());
    };
    const auto layLikeDestination = [&](PictureMemory& memory) {
        const Picture picture = memory.lay(tested().destination, tested().destinationSize(size), suited(tested(), aligned, size),
                                           tested().slice.destinationRowsAbove);
        copy(destination, picture);
        return picture;
    };
    PictureMemory originalMemory, memories[count];
    const Picture original = layLikeDestination(originalMemory);
    Picture results[count];
    for (int i = 0; i < count; ++i) results[i] = layLikeDestination(memories[i]);
    const ZelStatus status = convert(destination);
    ASSERT_GE(status, zelStsNoErr);
    Snapshot expected(destination);

    ZelStatus statuses[count];
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back([&, i] {
            for (int k = 0; k < 20; ++k) {
                copy(original, results[i]);
                statuses[i] = convert(results[i]);
            }
        });
    threads.clear();
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(statuses[i], status);
        copy(results[i], destination);
        expected.acceptNaNs();
        EXPECT_EQ(expected.difference(), std::nullopt) << "thread " << i;
    }
}

}  // namespace
}  // namespace harness
