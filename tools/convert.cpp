#include "tools/convert.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include "tools/colorimetry.h"
#include "tools/errors.h"
#include "tools/foreign.h"
#include "tools/output.h"
#include "tools/sizes.h"
#include "tools/stages.h"

namespace tool {

namespace {

// The same bytes by another name, as a mosaic in a gray picture.
bool hasSameBytes(const Format& a, const Format& b) {
    return catalog::bytesOf(a.element) == catalog::bytesOf(b.element) &&
           std::ranges::equal(a.usedPlanes(), b.usedPlanes(), [](const catalog::Plane& p, const catalog::Plane& q) {
               return p.bytes == q.bytes && p.width == q.width && p.height == q.height;
           });
}

const FileKind* inputKind(const ConvertOptions& options, Source& source) {
    if (options.inputKind != "auto") return kindNamed(options.inputKind);
    if (!options.size.empty()) return nullptr;
    if (source.atEnd()) throw DataError(source.name() + " is empty");
    const std::string_view begin = source.peek(longestMagic);
    if (const FileKind* kind = kindByContent(begin)) return kind;
    if (const auto foreign = foreignFile(begin))
        throw UnsupportedError(source.name() + " can't be read here, for it is " + *foreign + " (of raw frames, give --size)");
    if (const FileKind* kind = kindByName(options.input))
        throw DataError(options.input + " is no " + std::string(kind->name) +
                        " file, whatever its name; of a raw one, give --size");
    return nullptr;
}

std::unique_ptr<Reader> open(const ConvertOptions& options, Source& source) {
    if (const FileKind* kind = inputKind(options, source)) {
        auto reader = kind->read(source);
        if (!options.size.empty() && parseSize(options.size) != reader->size())
            throw UsageError("--size differs from the size in " + source.name());
        return reader;
    }
    if (options.from.empty() || options.size.empty())
        throw UsageError(source.name() + " is raw: say what is in it, as in --from nv12 --size 1920x1080");
    return rawReader(source, formatNamed(options.from), parseSize(options.size));
}

const Format& sourceFormat(const ConvertOptions& options, const Reader& reader) {
    if (options.from.empty()) return reader.format();
    const Format& wanted = formatNamed(options.from);
    if (!hasSameBytes(wanted, reader.format()))
        throw UsageError("the input is " + std::string(reader.format().name) + ", and its bytes can't be " + options.from +
                         "; leave --from out");
    return wanted;
}

void checkFiles(const ConvertOptions& options) {
    if (options.input.empty() || options.output.empty())
        throw UsageError("name the input and the output, - for a pipe, or give --from, --to and --dry-run to see the way");
}

void refuseFolder(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        throw FileError("cannot write " + path + ": it is a folder; name a file in it");
}

void checkNumbers(ConvertOptions& options) {
    const size_t twists = options.wishes.twist.size(), weights = options.wishes.weights.size();
    if (twists != 0 && twists != 12 && twists != 16) throw UsageError("--twist takes 12 or 16 numbers with commas between them");
    if (weights != 0 && weights != 3) throw UsageError("--weights takes three numbers, as in 0.3,0.6,0.1");
    if (options.gammaRange.empty()) return;
    int end = 0;
    const int found = std::sscanf(options.gammaRange.c_str(), "%f,%f%n", &options.wishes.lowest, &options.wishes.highest, &end);
    if (found != 2 || end != static_cast<int>(options.gammaRange.size()))
        throw UsageError("--gamma-range takes two numbers, as in 0,1, not \"" + options.gammaRange + '"');
}

int threadsOf(const ConvertOptions& options) {
    return options.threads > 0 ? options.threads : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

int showWay(const Way& way) {
    std::fputs(describe(way).c_str(), stdout);
    return success;
}

void tell(const std::string& text) { std::fprintf(stderr, "zelcc: %s\n", text.c_str()); }

void tellWay(const Way& way) {
    std::string functions;
    for (const Step& step : way) functions += (functions.empty() ? "" : ", ") + nameOf(step);
    tell("by " + (functions.empty() ? "copied planes" : functions));
}

// A dither to as many levels as there are.
bool reducesNothing(const Step& step, const Wishes& wishes) {
    return step.conversion->verb == "reduce" && step.targetFormat().bits >= step.sourceFormat().bits && !wishes.levels &&
           wishes.noise.value_or(0) == 0 && wishes.ditherType() != zelDitherNone;
}

bool keepsAlpha(const Step& step) {
    return hasAlpha(step.targetFormat()) && step.alpha != Alpha::opaqueBefore && step.alpha != Alpha::opaqueAfter;
}

// What a caller may not expect of the result.
void tellLosses(const Format& from, const Decision& d) {
    const std::string source(from.name), target(d.to.name);
    if (hasAlpha(from) && !hasAlpha(d.to)) tell("alpha is left out, for " + target + " has none");
    if (hasAlpha(from) && hasAlpha(d.to) && !std::ranges::all_of(d.way, keepsAlpha))
        tell("alpha becomes opaque, for not all functions on the way keep it");
    for (const Step& step : d.way) {
        if (!step.conversion) continue;
        if (reducesNothing(step, d.wishes))
            tell("--dither changes nothing, for " + target + " has all levels of " + source + "; --levels takes fewer");
        if (step.sourceFormat().model == Model::ycbcr && step.targetFormat().model == Model::gray)
            tell("gray is luma as it is: in limited range black is 16 and white 235");
    }
}

}  // namespace

int convert(ConvertOptions options) {
    checkNumbers(options);
    if (options.isDry && options.input.empty()) {
        if (options.from.empty()) throw UsageError("--dry-run takes --from or an input");
        const Format& from = formatNamed(options.from);
        return showWay(decide(options, {.name = "the input", .colour = {}}, from).way);
    }
    checkFiles(options);
    refuseFolder(options.output);
    Source source(options.input);
    const auto reader = open(options, source);
    const Format& from = sourceFormat(options, *reader);
    const Stated stated{source.name(), reader->colour(), reader->timing().interlacing};
    const Decision decision = decide(options, stated, from);
    if (options.isDry) return showWay(decision.way);

    const Format& to = decision.to;
    const Rect part = parseCrop(options.crop, from, reader->size(), hasFields(options, stated));
    if (!options.isQuiet) {
        tellWay(decision.way);
        tellLosses(from, decision);
    }
    FrameKind kind{to, part.size, reader->timing(), decision.colour};
    kind.timing.interlacing = decision.interlacing;

    Converter converter({from, to, reader->size(), part, decision.way, decision.wishes}, threadsOf(options));
    const bool hasFewer = reader->frameCount() >= 0 && reader->frameCount() < options.frames;
    const int64_t frameCount = options.frames < 0 || hasFewer ? reader->frameCount() : options.frames;
    Output output(options, kind, source, frameCount);
    Progress progress(frameCount, options.isQuiet);
    convertAll(*reader, converter, output, options.frames, progress);
    if (!options.isQuiet && !reader->leftOut().empty()) tell(source.name() + ": " + reader->leftOut() + " are left out");
    return success;
}

}  // namespace tool
