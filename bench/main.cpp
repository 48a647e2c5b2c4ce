// zelcc_bench [Google Benchmark's options]    measures contenders one by one
// zelcc_bench --compare [options]             measures them in turns and prints ratios
// zelcc_bench --pipelines [options]           measures three calls in a row, over whole frames and over strips of them
// zelcc_bench --threads [options]             measures one call beside two at once, each on half of the rows
// zelcc_bench --check [options]               compares the results of the peers with those of the exports
//
//   --filter=REGEX   only the exports whose name it finds
//   --size=WxH       instead of 16x16, 640x480, 3840x2160 and 7680x4320; may stand several times
//   --rounds=N  --slice=MS   of --compare: slices a contender, and their length
//   --best           of --compare: figures of the fastest slices instead of medians, where much else is running
//   --against=FILE   of --compare: another build of the library takes part; may stand several times
//   --json=FILE      of --compare: also writes all figures to a file
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <regex>
#include <stdexcept>
#include <utility>

#include "compare.h"
#include "level.h"
#include "pipelines.h"
#include "threads.h"

namespace bench {

namespace {

// A call's own cost, a frame that fits the caches, two that do not.
constexpr Size usualSizes[] = {{16, 16}, {640, 480}, {3840, 2160}, {7680, 4320}};

struct Options {
    std::regex filter{""};
    std::vector<Size> sizes{std::begin(usualSizes), std::end(usualSizes)};
    Effort effort;
    std::string json;
};

// Whole chroma sites, and planes that follow each other without a gap, for all layouts.
constexpr int sizeMultiple = 16;

Size parseSize(const char* text) {
    Size size{};
    const bool parsed = std::sscanf(text, "%dx%d", &size.width, &size.height) == 2;
    if (!parsed || size.width < 1 || size.height < 1 || size.width % sizeMultiple || size.height % sizeMultiple)
        throw std::runtime_error(std::string("not a size with sides that are multiples of 16: ") + text);
    return size;
}

Options parse(int argc, char** argv) {
    Options options;
    std::vector<Size> sizes;
    for (int i = 2; i < argc; ++i) {
        const auto valueOf = [&](const char* name) {
            const size_t length = std::strlen(name);
            return std::strncmp(argv[i], name, length) ? nullptr : argv[i] + length;
        };
        if (const char* value = valueOf("--filter="))
            options.filter = value;
        else if (const char* value = valueOf("--size="))
            sizes.push_back(parseSize(value));
        else if (const char* value = valueOf("--rounds="))
            options.effort.rounds = std::max(1, std::stoi(value));
        else if (const char* value = valueOf("--slice="))
            options.effort.sliceSeconds = std::max(0.01, std::stod(value)) / 1000;
        else if (valueOf("--best"))
            options.effort.best = true;
        else if (const char* value = valueOf("--against="))
            options.effort.others.push_back(value);
        else if (const char* value = valueOf("--json="))
            options.json = value;
        else
            throw std::runtime_error(std::string("unknown option ") + argv[i]);
    }
    if (!sizes.empty()) options.sizes = sizes;
    return options;
}

std::vector<Export> selected(const Options& options) {
    std::vector<Export> rows;
    for (const Export& row : exports()) {
        if (std::regex_search(row.name.begin(), row.name.end(), options.filter)) rows.push_back(row);
    }
    if (rows.empty()) throw std::runtime_error("the filter finds no export");
    return rows;
}

void printMachine() {
    std::printf("%s, level %s", processorName().c_str(), selectedLevel().c_str());
    for (const std::string& version : peerVersions()) std::printf(", %s", version.c_str());
    std::printf("\n\n");
}

int runComparison(const Options& options) {
    std::vector<Comparison> comparisons;
    std::printf("%s\n", tableHead().c_str());
    for (const Export& row : selected(options)) {
        for (const Size size : options.sizes) {
            comparisons.push_back(compare(row, size, options.effort));
            std::printf("%s\n", tableLine(comparisons.back()).c_str());
            std::fflush(stdout);
        }
    }
    if (!options.json.empty() && !(std::ofstream(options.json) << toJson(comparisons)))
        throw std::runtime_error("cannot write " + options.json);
    return 0;
}

// A peer in the wrong row, or with channels or chroma planes exchanged, is off by far more than rounding, fields of 4 bits,
// siting and full-range YUV can explain.
int runCheck(const Options& options) {
    constexpr double tolerance = 16;
    int faults = 0;
    for (const Export& row : selected(options)) {
        for (const Size size : options.sizes) {
            const Workload workload(row, size);
            const Image& result = workload.result();
            const size_t bytes = bytesOf(row.task.destination, size);
            const OwnImage expected(row.task.destination, size);
            const auto resultOf = [&](const Contender& contender) {
                std::memset(result.planes[0].data, 0, bytes);
                contender.call();
            };
            resultOf(workload.contenders()[Workload::exportIndex]);
            std::memcpy(expected.memory.get(), result.planes[0].data, bytes);
            for (size_t i = Workload::firstPeer; i < workload.contenders().size(); ++i) {
                const Contender& peer = workload.contenders()[i];
                if (peer.hasOtherScale) continue;
                resultOf(peer);
                const double difference = meanDifference(result, expected.image);
                const bool fault = difference > tolerance;
                faults += fault;
                std::printf("%-36s %4dx%-4d %6.2f  %s%s\n", std::string(row.name).c_str(), size.width, size.height, difference,
                            peer.name.c_str(), fault ? "  DIFFERS" : "");
            }
        }
    }
    return faults ? 1 : 0;
}

int measurePipelines(const Options& options) {
    runPipelines(options.sizes, options.effort);
    return 0;
}

int measureThreads(const Options& options) {
    runThreads(selected(options), options.sizes, options.effort);
    return 0;
}

// Google Benchmark runs a function several times; the buffers of the last workload are kept between the runs.
const Workload& workloadOf(const Export& row, Size size) {
    static std::unique_ptr<Workload> workload;
    static std::string name;
    static Size measured{};
    if (!workload || name != row.name || measured.width != size.width || measured.height != size.height) {
        workload.reset();
        workload = std::make_unique<Workload>(row, size);
        name = row.name;
        measured = size;
    }
    return *workload;
}

void measure(benchmark::State& state, const Export& row, Size size, size_t contender) {
    const Workload& workload = workloadOf(row, size);
    const Call& call = workload.contenders()[contender].call;
    for (auto _ : state) call();
    state.SetBytesProcessed(static_cast<int64_t>(workload.bytes() * double(state.iterations())));
    state.SetItemsProcessed(state.iterations());
}

int runGoogleBenchmark(int argc, char** argv) {
    for (const Export& row : exports()) {
        const std::vector<Peer> peers = peersOf(row.task);
        for (const Size size : usualSizes) {
            const std::string name = std::string(row.name) + "/" + std::to_string(size.width) + "x" + std::to_string(size.height);
            const auto add = [&](const std::string& suffix, size_t contender) {
                benchmark::RegisterBenchmark((name + suffix).c_str(), measure, row, size, contender);
            };
            add("", Workload::exportIndex);
            add("/copy", Workload::copyIndex);
            add("/streamed_copy", Workload::streamedCopyIndex);
            for (size_t i = 0; i < peers.size(); ++i) add("/" + peers[i].name, Workload::firstPeer + i);
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::AddCustomContext("level", selectedLevel());
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

int run(int argc, char** argv) {
    const std::string_view mode = argc > 1 ? argv[1] : "";
    constexpr std::pair<std::string_view, int (*)(const Options&)> modes[] = {
        {"--compare", runComparison}, {"--check", runCheck}, {"--pipelines", measurePipelines}, {"--threads", measureThreads}};
    const auto found = std::ranges::find(modes, mode, &std::pair<std::string_view, int (*)(const Options&)>::first);
    if (found == std::end(modes)) return runGoogleBenchmark(argc, argv);
    const Options options = parse(argc, argv);
    printMachine();
    return found->second(options);
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) try { return bench::run(argc, argv); } catch (const std::exception& error) {
    std::fprintf(stderr, "zelcc_bench: %s\n", error.what());
    return 2;
}
