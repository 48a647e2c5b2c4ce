// docs/statuses.txt has the smallest size that a conversion takes, the statuses that it can return, and whether it takes a region
// without pixels. The test finds both by
// calls that are wrong in every way there is; one that fails prints the line that is right.
#include <fstream>
#include <set>
#include <sstream>

#include "harness/conversion_test.h"
#include "harness/machine.h"
#include "zelcc/chroma.h"

namespace harness {
namespace {

constexpr std::pair<ZelStatus, const char*> names[] = {
    {zelStsNullPtrErr, "zelStsNullPtrErr"},
    {zelStsSizeErr, "zelStsSizeErr"},
    {zelStsStepErr, "zelStsStepErr"},
    {zelStsRangeErr, "zelStsRangeErr"},
    {zelStsNoiseValErr, "zelStsNoiseValErr"},
    {zelStsDitherLevelsErr, "zelStsDitherLevelsErr"},
    {zelStsDitherTypeErr, "zelStsDitherTypeErr"},
    {zelStsMemAllocErr, "zelStsMemAllocErr"},
    {zelStsNoOperationWarn, "zelStsNoOperationWarn"},
    {zelStsOddSizeWarn, "zelStsOddSizeWarn"},
    {zelStsNoErr, "zelStsNoErr"},
};

class StatusConversion : public Conversion {
  protected:
    static constexpr ZelSize room{76, 16}, largeImage{1024, 32};

    void tryAll() {
        const Pictures pictures = layFilled(room);
        for (int argument = 0; argument < tested().entry.pointerArguments; ++argument) {
            model::Call call = callOn(pictures, room);
            call.nullArgument = argument;
            note(call);
        }
        for (int width = -1; width <= 12; ++width)
            for (int height = -1; height <= 12; ++height) {
                if (note(callOn(pictures, {width, height})) < zelStsNoErr) continue;
                if (width < 1 || height < 1)
                    takesEmpty_ = true;
                else
                    smallest_ = {std::min(smallest_.width, width), std::min(smallest_.height, height)};
            }
        for (const int32_t step : {0, -1}) {
            model::Call call = callOn(pictures, {room.width / 4, 8});
            call.source.steps.fill(step);
            call.destination.steps.fill(step);
            note(call);
        }
        tryParameters(pictures);
        // Bytes that are floats below zero.
        for (const PicturePlane& p : pictures.source.usedPlanes()) std::ranges::fill(p.memory, 0xbf);
        note(callOn(pictures, room));
        const FreshMachine fresh;
        machine.hasMemory = false;
        tryParameters(layFilled(largeImage));
    }

    std::string line() const {
        std::ostringstream line;
        line << tested().name << ' ' << smallest_.width << 'x' << smallest_.height;
        for (const auto& [status, name] : names)
            if (found_.contains(status)) line << ' ' << name;
        if (takesEmpty_) line << " empty";
        return line.str();
    }

  private:
    Pictures layFilled(ZelSize size) {
        Random random(seed());
        return lay(size, {aligned, aligned}, random, Content::uniform);
    }
    model::Call callOn(const Pictures& pictures, ZelSize size) const {
        return {.source = pictures.source.operand(),
                .destination = pictures.destination.operand(),
                .size = size,
                .slice = tested().slice.argument,
                .parameters = tested().firstParameters()};
    }
    ZelStatus note(const model::Call& call) {
        const ZelStatus status = tested().entry.call(call);
        EXPECT_TRUE(std::ranges::any_of(names, [&](const auto& name) { return name.first == status; })) << status;
        found_.insert(status);
        return status;
    }
    // Those of the table, and some that are out of range.
    void tryParameters(const Pictures& pictures) {
        model::Call call = callOn(pictures, pictures.source.size);
        note(call);
        for (const model::Parameters& p : tested().parameters) {
            call.parameters = p;
            note(call);
        }
        const model::Parameters valid = call.parameters;
        call.parameters.numbers = {1, 0};
        note(call);
        for (const auto& [place, value] : {std::pair{0, 101}, {0, -1}, {1, 77}, {1, -1}, {2, 1}, {2, 65537}}) {
            call.parameters = valid;
            call.parameters.integers.at(place) = value;
            note(call);
        }
    }

    std::set<ZelStatus> found_;
    ZelSize smallest_{INT32_MAX, INT32_MAX};
    bool takesEmpty_ = false;  // a side below 1 is no error
};

TEST_P(StatusConversion, ReturnsTheStatusesThatAreStated) {
    static const std::set<std::string> stated = [] {
        std::set<std::string> lines;
        std::ifstream file(ZELCC_STATUSES);
        for (std::string line; std::getline(file, line);) lines.insert(line);
        return lines;
    }();
    tryAll();
    EXPECT_TRUE(stated.contains(line())) << "statuses.txt lacks the line\n" << line();
}

INSTANTIATE_TEST_SUITE_P(Every, StatusConversion, every(isOfWholeImages), nameOf);

}  // namespace
}  // namespace harness
