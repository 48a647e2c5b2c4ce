#include "tools/convert.h"

#include <algorithm>
#include <cstdio>
#include <thread>

#include "tools/errors.h"
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
    constexpr size_t longestMagic = 16;
    if (const FileKind* kind = kindByContent(source.peek(longestMagic))) return kind;
    if (const FileKind* kind = kindByName(options.input))
        throw DataError(options.input + " is no " + std::string(kind->name) +
                        " file, whatever its name; of a raw one, give --size");
    return nullptr;
}

std::unique_ptr<Reader> open(const ConvertOptions& options, Source& source) {
    if (const FileKind* kind = inputKind(options, source)) {
        auto reader = kind->read(source);
        if (std::max(reader->size().width, reader->size().height) > largestSide)
            throw DataError(source.name() + ": frames have more than " + std::to_string(largestSide) + " pixels a side");
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

void checkNumbers(ConvertOptions& options) {
    const size_t twists = options.wishes.twist.size(), weights = options.wishes.weights.size();
    if (twists != 0 && twists != 12 && twists != 16) throw UsageError("--twist takes 12 or 16 numbers with commas between them");
    if (weights != 0 && weights != 3) throw UsageError("--weights takes three numbers, as in 0.3,0.6,0.1");
    if (options.range.empty()) return;
    int end = 0;
    const int found = std::sscanf(options.range.c_str(), "%f,%f%n", &options.wishes.lowest, &options.wishes.highest, &end);
    if (found != 2 || end != static_cast<int>(options.range.size()))
        throw UsageError("--range takes two numbers, as in 0,1, not \"" + options.range + '"');
}

int threadsOf(const ConvertOptions& options) {
    return options.threads > 0 ? options.threads : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
}

int showWay(const ConvertOptions& options, const Format& from) {
    const Format& to = targetFormat(options, from);
    std::fputs(describe(wayOrRefusal(canonical(from), canonical(to), options.wishes)).c_str(), stdout);
    return success;
}

// Whoever asked for one conversion is told that it became several.
void tellWay(const Way& way) {
    if (way.size() < 2) return;
    std::string functions;
    for (const Step& step : way)
        functions += (functions.empty() ? "" : ", ") + (step.moves() ? "moved samples" : std::string(step.function().name));
    std::fprintf(stderr, "zelcc: by %s\n", functions.c_str());
}

}  // namespace

int convert(ConvertOptions options) {
    checkNumbers(options);
    if (options.isDry && options.input.empty()) {
        if (options.from.empty()) throw UsageError("--dry-run takes --from or an input");
        return showWay(options, formatNamed(options.from));
    }
    checkFiles(options);
    Source source(options.input);
    const auto reader = open(options, source);
    const Format& from = sourceFormat(options, *reader);
    if (options.isDry) return showWay(options, from);

    const Format& to = targetFormat(options, from);
    const Way way = wayOrRefusal(canonical(from), canonical(to), options.wishes);
    if (!options.isQuiet) tellWay(way);
    const Rect part = parseCrop(options.crop, from, reader->size());
    FrameKind kind{to, part.size, reader->timing(), options.wishes.matrix == "709-full"};
    if (options.wishes.interlaced && kind.timing.interlacing == "p") kind.timing.interlacing = "t";

    Converter converter({from, to, reader->size(), part, way, options.wishes}, threadsOf(options));
    const bool hasFewer = reader->frameCount() >= 0 && reader->frameCount() < options.frames;
    const int64_t frameCount = options.frames < 0 || hasFewer ? reader->frameCount() : options.frames;
    Output output(options, kind, source, frameCount);
    Progress progress(frameCount, options.isQuiet);
    convertAll(*reader, converter, output, options.frames, progress);
    return success;
}

}  // namespace tool
