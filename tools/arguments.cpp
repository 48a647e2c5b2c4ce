#include "tools/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <new>

#include "catalog/names.h"
#include "tools/bench.h"
#include "tools/check.h"
#include "tools/colorimetry.h"
#include "tools/convert.h"
#include "tools/errors.h"
#include "tools/info.h"
#include "tools/level.h"
#include "tools/list.h"

namespace tool {

namespace {

constexpr const char* examples = R"(
Examples:
  zelcc convert --from nv12 --to rgb24 --size 1920x1080 in.yuv out.rgb
  zelcc convert photo.png frame.y4m --to yuv420p
  zelcc convert --demosaic ahd --from bayer_rggb8 raw.pgm photo.png
  ffmpeg -i film.mkv -f yuv4mpegpipe - | zelcc convert - - --to rgb24 --threads 2 | player
  zelcc convert --from nv12 --to yuyv422 --dry-run      which functions that takes
  zelcc list formats planes                             all formats of several planes
  zelcc check                                           are the results what they should be?

Exit codes: 0 done, 1 the data are wrong or a check failed, 2 wrong usage, 3 no functions lead there or take such data, 4 a file
can't be opened, read or written. The manual page zelcc(1) says more.)";

void addWishes(CLI::App& app, ConvertOptions& options) {
    Wishes& w = options.wishes;
    const auto names = [](auto... name) { return CLI::IsMember(std::vector<std::string>{name...}); };
    app.option_defaults()->group("How");
    const auto checkedBy = [](std::string (*refused)(const std::string&)) { return CLI::Validator(refused, ""); };
    const CLI::Validator ownNames([](std::string& text) { return text = withOwnNames(text), std::string(); }, "");
    app.add_option("--matrix", options.matrix,
                   "Of luma and chroma: 601 (default), 709, 2020, 240m, fcc, ycgco, 709-full or yuv; of both sides as 709:2020")
        ->transform(ownNames)
        ->check(checkedBy(refusedMatrix));
    app.add_option("--range", options.range, "Of luma and chroma, whatever the input says: limited or full, or a pair")
        ->transform(ownNames)
        ->check(checkedBy(refusedRange));
    app.add_option("--location", options.location, "Of chroma, whatever the input says: left, center or topleft, or a pair")
        ->check(checkedBy(refusedLocation));
    app.add_option("--demosaic", w.demosaic, "Colours of a mosaic: bilinear (default) or ahd")->check(names("bilinear", "ahd"));
    app.add_flag("--filter", w.filter, "Interpolate chroma instead of repeating it");
    CLI::Option* fields = app.add_flag("--interlaced", w.interlaced, "Keep the fields apart where chroma gets or loses rows");
    app.add_flag("--progressive", options.isProgressive, "Take frames as whole, whatever the input says")->excludes(fields);
    app.add_option("--dither", w.dither, "none, bayer, floyd-steinberg, jarvis or stucki, where samples get fewer levels")
        ->check(names("none", "bayer", "floyd-steinberg", "jarvis", "stucki"));
    app.add_option("--levels", w.levels, "Reduce samples to so many levels; of some numbers, as 8 and 32, white may become 254")
        ->check(CLI::Range(2, 65536));
    app.add_option("--noise", w.noise, "Percent of noise at the thresholds of levels")->check(CLI::Range(0, 100));
    app.add_option("--threshold", w.threshold, "Above it a pixel of monob is white (127)")->check(CLI::Range(0, 255));
    app.add_option("--gamma", w.gamma, "forward (to the video curve) or inverse (to linear light)")
        ->check(names("forward", "inverse"));
    app.add_option("--gamma-range", options.gammaRange, "Of floats in gamma correction, as LOWEST,HIGHEST (0,1)")
        ->type_name("RANGE");
    app.add_option("--tone-map", w.toneMap, "Floats to bytes by their maximum or mean")->check(names("maximum", "mean"));
    app.add_option("--twist", w.twist, "Colour matrix of 12 or 16 numbers, rows of 4")->delimiter(',')->allow_extra_args(false);
    app.add_option("--weights", w.weights, "Of red, green and blue in gray")->delimiter(',')->allow_extra_args(false);
}

void addConvert(CLI::App& app, int& code) {
    static ConvertOptions options;  // filled in when the command line is read, as the others are
    CLI::App* command = app.add_subcommand("convert", "Convert files and streams from one format to another");
    command->add_option("input", options.input, "File, or - for the standard input")->type_name("FILE");
    command->add_option("output", options.output, "File, - for the standard output, or numbered files as out-%04d.png")
        ->type_name("FILE");
    command->option_defaults()->group("What");
    command->add_option("--from", options.from, "Format of the input, if it doesn't tell")->type_name("FORMAT");
    command->add_option("--to", options.to, "Format of the output; of files that hold few, the one that loses least")
        ->type_name("FORMAT");
    command->add_option("--size", options.size, "WIDTHxHEIGHT of raw frames")->type_name("SIZE");
    command->add_option("--crop", options.crop, "WIDTHxHEIGHT+X+Y: convert only this part")->type_name("PART");
    command->add_option("--frames", options.frames, "At most so many")->check(CLI::NonNegativeNumber);
    const CLI::IsMember kinds(std::vector<std::string>{"auto", "raw", "y4m", "png", "jpeg", "pnm", "pfm"});
    command->add_option("--input-kind", options.inputKind, "Instead of what content tells: raw, y4m, png, jpeg, pnm, pfm")
        ->check(kinds);
    command->add_option("--output-kind", options.outputKind, "Instead of what the name tells")->check(kinds);
    addWishes(*command, options);
    command->option_defaults()->group("Running");
    command->add_option("--threads", options.threads, "As many as the machine has, if nothing is said")
        ->check(CLI::Range(1, 1024));
    command->add_flag("--dry-run", options.isDry, "Print the functions that would be called, and convert nothing");
    command->add_flag("-q,--quiet", options.isQuiet, "Don't tell which functions are called, and show no progress");
    command->callback([&code] { code = convert(options); });
}

void addOthers(CLI::App& app, int& code) {
    static std::string what = "all";
    static std::vector<std::string> words;
    CLI::App* listing = app.add_subcommand("list", "List formats, conversions and functions");
    listing->add_option("what", what, "formats, conversions, functions, or all formats and conversions")
        ->check(CLI::IsMember(std::vector<std::string>{"formats", "conversions", "functions", "all"}));
    listing->add_option("words", words, "Only lines with all of these words")->type_name("WORD");
    listing->callback([&code] { code = list(what, words); });

    app.add_subcommand("info", "Print version, level and features")->callback([&code] { code = info(); });

    static CheckOptions checking;
    CLI::App* checks = app.add_subcommand("check", "Compare the results of both libraries at all levels with the published ones");
    checks->add_option("words", checking.words, "Only what has all of these words in its name; zelv is in those of libzelvideo")
        ->type_name("WORD");
    checks->add_option("--write", checking.write, "Bring the list of published checksums in this file up to date")
        ->type_name("FILE");
    checks->add_flag("--sums", checking.printsSums, "Print the checksums at this level and compare nothing");
    checks->callback([&code] { code = check(checking); });

    static BenchOptions timing;
    CLI::App* benches = app.add_subcommand("bench", "Measure a function on this machine");
    benches->add_option("function", timing.function, "Its name, with or without the prefix")->required()->type_name("NAME");
    benches->add_option("--size", timing.size, "WIDTHxHEIGHT (1920x1080)")->type_name("SIZE");
    benches->add_option("--threads", timing.threads, "Strips of the image at once (1)")->check(CLI::Range(1, 1024));
    benches->add_option("--seconds", timing.seconds, "How long to measure (1)")->check(CLI::PositiveNumber);
    benches->callback([&code] { code = bench(timing); });
}

// Other words than commands would be told as a missing command.
void checkCommand(const CLI::App& app, std::string_view word) {
    std::vector<std::string_view> names;
    const auto commands = app.get_subcommands([](const CLI::App*) { return true; });
    for (const CLI::App* command : commands) names.push_back(command->get_name());
    if (word.starts_with('-') || std::ranges::find(names, word) != names.end()) return;
    throw UsageError("there is no command \"" + std::string(word) + '"' + catalog::suggestion(word, names));
}

int report(const char* message, ExitCode code) {
    std::fprintf(stderr, "zelcc: %s\n", message);
    return code;
}

// An error that was met when the buffer was written before counts as well.
void flushOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) throw FileError("cannot write the standard output");
}

int parse(int count, char** arguments) {
    CLI::App app("Colour conversion of images and video, with results defined to the last bit", "zelcc");
    app.require_subcommand(1);
    app.set_version_flag("--version", "zelcc " ZELCC_VERSION);
    app.fallthrough(false);
    int code = success;
    addConvert(app, code);
    addOthers(app, code);
    app.footer(examples);  // now, or the commands would have it too
    try {
        currentLevel();  // a level that isn't there is an error whatever is done
        checkCommand(app, count > 1 ? arguments[1] : "-");
        app.parse(count, arguments);
    } catch (const CLI::ParseError& e) {
        if (app.exit(e) != 0) return usage;
    }
    flushOutput();
    return code;
}

}  // namespace

int run(int count, char** arguments) {
    try {
        return parse(count, arguments);
    } catch (const Error& e) {
        return report(e.what(), e.code);
    } catch (const std::bad_alloc&) {
        return report("there is not enough memory for frames of that size", failure);
    } catch (const std::exception& e) {
        return report(e.what(), failure);
    }
}

}  // namespace tool
