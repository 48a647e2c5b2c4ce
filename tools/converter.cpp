#include "tools/converter.h"

#include <algorithm>
#include <cstring>

#include "catalog/path.h"
#include "tools/errors.h"

namespace tool {

namespace {

constexpr int bytesBetweenSteps = 1 << 18;  // of a strip, so that the next step finds them in a near cache

// Such a step takes images of any size, and rows of a part from the whole.
bool isOneVideoStep(const Job& job) { return job.way.size() == 1 && job.way[0].isByVideo; }

Site siteOfAll(const Job& job) {
    if (isOneVideoStep(job)) return {};
    Site site = common(job.from.site, job.to.site);
    for (const Step& step : job.way) site = common(site, step.site(job.wishes));
    return site;
}

bool wantsWholeImage(const Job& job) {
    return std::ranges::any_of(job.way, [&](const Step& s) { return s.wantsWholeImage(job.wishes); });
}

// Enough strips for all threads, and short enough for the caches where images lie between the steps.
int stripRows(const Job& job, Size laid, int threads) {
    const int rows = (laid.height + threads - 1) / threads;
    if (isOneVideoStep(job)) return roundUp(rows, 2);
    if (wantsWholeImage(job)) return laid.height;
    int limit = laid.height;
    for (size_t i = 1; i < job.way.size(); ++i) {
        const auto rowBytes = static_cast<int64_t>(fileBytes(job.way[i].sourceFormat(), {laid.width, 16})) / 16 + 1;
        limit = std::min(limit, static_cast<int>(bytesBetweenSteps / rowBytes));
    }
    return roundUp(std::clamp(limit, 1, rows), siteOfAll(job).height);
}

// Formats and images that were checked before.
void expect(ZelStatus status) {
    if (status < 0) throw DataError("zelvConvert refuses the image: status " + std::to_string(status));
}

[[noreturn]] void refuse(const Function& function, ZelStatus status) {
    const std::string what = std::string(function.name) + " refuses the image: ";
    if (status == zelStsSizeErr) throw UnsupportedError(what + "it is too small");
    if (status == zelStsDitherLevelsErr) throw UsageError(what + "it has no such number of levels; ask for fewer, at least 2");
    if (status == zelStsNoiseValErr) throw UsageError(what + "noise goes from 0 to 100");
    if (status == zelStsRangeErr) throw UsageError(what + "the upper end of --gamma-range has to be above the lower one");
    throw DataError(what + (status == zelStsMemAllocErr ? "there is no memory left" : "status " + std::to_string(status)));
}

catalog::Side sideOf(const Planes& planes, const std::array<int8_t, 4>& order, int count) {
    catalog::Side side;
    for (int i = 0; i < count; ++i) {
        side.planes[i] = planes.data[order[i]];
        side.steps[i] = planes.steps[order[i]];
    }
    return side;
}

int mostLevels(const Format& format) { return catalog::bytesOf(format.element) == 1 ? 256 : 65536; }

}  // namespace

Converter::Converter(Job job, int threads)
    : job_(std::move(job)),
      laid_(wholeSites(job_.part.size, siteOfAll(job_))),
      stripRows_(stripRows(job_, laid_, threads)),
      twist_(job_.wishes.twist.begin(), job_.wishes.twist.end()),
      weights_(job_.wishes.weights.begin(), job_.wishes.weights.end()),
      workers_(std::clamp((laid_.height + stripRows_ - 1) / stripRows_, 1, threads)),
      rooms_(static_cast<size_t>(workers_.count())) {
    if (laid_ != job_.size) source_ = Frame(canonical(job_.from), laid_);
    if (laid_ != job_.part.size) target_ = Frame(canonical(job_.to), laid_);
    for (const Step& step : job_.way) {
        const ZelvOptions options = job_.wishes.videoOptions(step.sourceFormat(), step.targetFormat());
        if (step.isByVideo)
            expect(catalog::makePlan(&plan_, step.sourceFormat(), step.targetFormat(), job_.wishes.colours, options));
    }
    for (Room& room : rooms_) {
        for (size_t i = 1; i < job_.way.size(); ++i)
            room.frames.emplace_back(job_.way[i].sourceFormat(), Size{laid_.width, stripRows_});
        for (const Step& step : job_.way) {
            if (step.conversion && step.function().takes(catalog::Extra::temporary))
                room.temporary =
                    Buffer(Function::temporaryRows * static_cast<size_t>(step.function().temporaryStep(laid_.width)));
        }
    }
}

void Converter::convert(uint8_t* source, uint8_t* target) {
    const Format &from = canonical(job_.from), &to = canonical(job_.to);
    if (to.description.layout == zelvV210) std::memset(target, 0, targetBytes());  // what fills its rows up
    Planes given = inFile(job_.from, job_.size, source), made = inFile(job_.to, job_.part.size, target);
    if (laid_ != job_.size) {
        copyExtended(from, given, job_.part, source_.planes, laid_);
        given = source_.planes;
    }
    const Planes result = laid_ != job_.part.size ? target_.planes : made;
    workers_.run((laid_.height + stripRows_ - 1) / stripRows_,
                 [&](int strip, int worker) { convertStrip(given, result, strip, worker); });
    if (laid_ != job_.part.size) copyPart(to, result, made, job_.part.size);
}

void Converter::convertStrip(const Planes& source, const Planes& target, int strip, int worker) {
    Room& room = rooms_[static_cast<size_t>(worker)];
    const int row = strip * stripRows_;
    const Size size{laid_.width, std::min(stripRows_, laid_.height - row)};
    if (isOneVideoStep(job_)) {
        expect(zelvConvertRows(&plan_, source.data.data(), source.steps.data(), target.data.data(), target.steps.data(),
                               {laid_.width, laid_.height}, row, size.height));
        return;
    }
    const Planes last = target.fromRow(canonical(job_.to), row);
    Planes current = source.fromRow(canonical(job_.from), row);
    if (job_.way.empty()) copyPart(canonical(job_.to), current, last, size);
    for (size_t i = 0; i < job_.way.size(); ++i) {
        const Planes next = i + 1 < job_.way.size() ? room.frames[i].planes : last;
        apply(job_.way[i], current, next, size, room);
        current = next;
    }
}

const void* Converter::coefficientsOf(const Step& step) const {
    if (step.function().takesDoubles) return job_.wishes.weights.data();
    return step.conversion->method == "weights" ? weights_.data() : twist_.data();
}

void Converter::apply(const Step& step, const Planes& source, const Planes& target, Size size, Room& room) const {
    const Format &from = step.sourceFormat(), &to = step.targetFormat();
    if (step.moves()) {
        constexpr std::array<int8_t, 4> order{0, 1, 2, 3};
        catalog::rearrange(from, sideOf(source, order, from.planeCount), to, sideOf(target, order, to.planeCount),
                           {size.width, size.height});
        return;
    }
    if (step.isByVideo) {
        expect(zelvConvert(&plan_, source.data.data(), source.steps.data(), target.data.data(), target.steps.data(),
                           {size.width, size.height}));
        return;
    }
    const Function& function = step.function();
    const Wishes& w = job_.wishes;
    if (step.alpha == Alpha::copied) copyPart(from, source, target, size);
    if (step.alpha == Alpha::opaqueBefore) makeOpaque(to, target, size);
    // An image without light is not written at all.
    if (step.conversion->verb.starts_with("tone-"))
        for (int y = 0; y < size.height; ++y)
            std::memset(target.data[0] + int64_t{y} * target.steps[0], 0, static_cast<size_t>(size.width));
    const bool reduces = step.conversion->verb == "reduce";
    const ZelStatus status =
        function.call({.source = sideOf(source, step.conversion->sourceOrder, from.planeCount),
                       .destination = sideOf(target, step.conversion->targetOrder, to.planeCount),
                       .size = {size.width, size.height},
                       .region = {0, 0, size.width, size.height},
                       .alpha = static_cast<uint32_t>(catalog::opaque(to.element)),
                       .coefficients = coefficientsOf(step),
                       .lowest = w.lowest,
                       .highest = w.highest,
                       .noise = reduces ? w.noise.value_or(0) : 0,
                       .levels = w.levels.value_or(mostLevels(to)),
                       .threshold = w.threshold.value_or(127),
                       .dither = w.ditherType(),
                       .grid = from.grid,
                       .temporary = room.temporary.data(),
                       .temporaryStep = static_cast<int32_t>(room.temporary.size() / Function::temporaryRows)});
    if (status < 0) refuse(function, status);
    if (step.alpha == Alpha::opaqueAfter) makeOpaque(to, target, size);
}

}  // namespace tool
