#include "compare.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <random>
#include <sstream>

#include "level.h"

namespace bench {

namespace {

double secondsOf(const Call& call, long calls) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    for (long i = 0; i < calls; ++i) call();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// A slice is a number of batches, short enough that most of them run without an interruption by the system, and long enough
// that the resolution of the clock doesn't matter.
class Slice {
  public:
    Slice(const Call& call, double sliceSeconds) : call_(call) {
        const double batchSeconds = std::min(sliceSeconds, 0.00025);
        double seconds = secondsOf(call, 1);
        while (seconds < batchSeconds) seconds = secondsOf(call, calls_ *= 2);
        batches_ = std::max(1L, std::lround(sliceSeconds / seconds));
    }

    // What the one before left in the caches, and the state in which it left the processor, is not this one's to pay. On large
    // frames it takes some calls until the speed is steady.
    void warmUp() const {
        constexpr double least = 0.002, most = 0.03;
        constexpr int calls = 10;
        double seconds = 0;
        for (int i = 0; seconds < most && (i < calls || seconds < least); ++i) seconds += secondsOf(call_, 1);
    }

    // Seconds a call.
    double run() const {
        std::vector<double> seconds;
        for (long i = 0; i < batches_; ++i) seconds.push_back(secondsOf(call_, calls_) / double(calls_));
        return median(std::move(seconds));
    }

  private:
    const Call& call_;
    long calls_ = 1;  // a batch
    long batches_ = 1;
};

template <class... Values>
std::string formatted(const char* format, Values... values) {
    char text[256];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

void writeFigure(std::ostream& out, const Figure& figure) {
    out << "{\"name\": \"" << figure.name << "\", \"seconds\": " << figure.seconds << ", \"ratio\": " << figure.ratio << "}";
}

void writeFigures(std::ostream& out, const char* name, const std::vector<Figure>& figures) {
    out << ",\n \"" << name << "\": [";
    const char* between = "";
    for (const Figure& figure : figures) {
        out << between;
        writeFigure(out, figure);
        between = ", ";
    }
    out << "]";
}

}  // namespace

Comparison compare(const Export& row, Size size, const Effort& effort) {
    const Workload workload(row, size, effort.others);
    const auto& contenders = workload.contenders();
    const size_t count = contenders.size();
    std::vector<Slice> slices;
    for (const Contender& contender : contenders) slices.emplace_back(contender.call, effort.sliceSeconds);

    std::vector<std::vector<double>> seconds(count);
    std::vector<size_t> order(count);
    std::iota(order.begin(), order.end(), size_t{0});
    std::minstd_rand random;
    for (int round = 0; round < effort.rounds; ++round) {
        std::ranges::shuffle(order, random);  // nobody always follows the same one
        for (const size_t i : order) {
            slices[i].warmUp();
            seconds[i].push_back(slices[i].run());
        }
    }

    const auto figureOf = [&](size_t i) {
        if (effort.best) {
            const double fastest = std::ranges::min(seconds[i]);
            return Figure{contenders[i].name, fastest, fastest / std::ranges::min(seconds[Workload::exportIndex])};
        }
        std::vector<double> ratios;
        for (size_t round = 0; round < seconds[i].size(); ++round)
            ratios.push_back(seconds[i][round] / seconds[Workload::exportIndex][round]);
        return Figure{contenders[i].name, median(seconds[i]), median(ratios)};
    };
    Comparison comparison{.name = row.name,
                          .taskName = taskNameOf(row),
                          .size = size,
                          .bytes = workload.bytes(),
                          .self = figureOf(Workload::exportIndex),
                          .copy = figureOf(Workload::copyIndex),
                          .streamedCopy = figureOf(Workload::streamedCopyIndex),
                          .others = {},
                          .peers = {}};
    for (size_t i = 0; i < count; ++i) {
        if (contenders[i].role == Role::other) comparison.others.push_back(figureOf(i));
        if (contenders[i].role == Role::peer) comparison.peers.push_back(figureOf(i));
    }
    std::ranges::sort(comparison.peers, {}, &Figure::seconds);
    return comparison;
}

std::string tableHead() {
    return formatted("%-36s %9s %7s %7s %8s %11s %7s  %s", "export", "size", "GB/s", "of copy", "streamed", "calls/s", "ratio",
                     "fastest peer");
}

std::string tableLine(const Comparison& comparison) {
    const double seconds = comparison.self.seconds;
    std::string line =
        formatted("%-36.*s %4dx%-4d %7.2f %7.2f %8.2f %11.0f", static_cast<int>(comparison.name.size()), comparison.name.data(),
                  comparison.size.width, comparison.size.height, comparison.bytes / seconds / 1e9, comparison.copy.ratio,
                  comparison.streamedCopy.ratio, 1 / seconds);
    if (!comparison.peers.empty()) {
        const Figure& fastest = comparison.peers.front();
        line += formatted(" %7.2f  %s", fastest.ratio, fastest.name.c_str());
    }
    for (const Figure& other : comparison.others) line += formatted(" %7.2f  %s", other.ratio, other.name.c_str());
    return line;
}

std::string toJson(const std::vector<Comparison>& comparisons) {
    std::ostringstream out;
    out << "{\n\"processor\": \"" << processorName() << "\",\n\"level\": \"" << selectedLevel() << "\",\n\"compiler\": \""
#ifdef __clang__
        << "Clang " << __clang_version__
#else
        << "GCC " << __VERSION__
#endif
        << "\",\n\"peers\": [";
    const char* separator = "";
    for (const std::string& version : peerVersions()) {
        out << separator << '"' << version << '"';
        separator = ", ";
    }
    out << "],\n\"comparisons\": [";
    separator = "\n";
    for (const Comparison& comparison : comparisons) {
        out << separator << "{\"export\": \"" << comparison.name << "\", \"task\": \"" << comparison.taskName
            << "\", \"width\": " << comparison.size.width << ", \"height\": " << comparison.size.height
            << ", \"bytes\": " << comparison.bytes << ",\n \"self\": ";
        separator = ",\n";
        writeFigure(out, comparison.self);
        out << ",\n \"copy\": ";
        writeFigure(out, comparison.copy);
        out << ",\n \"streamedCopy\": ";
        writeFigure(out, comparison.streamedCopy);
        writeFigures(out, "others", comparison.others);
        writeFigures(out, "peers", comparison.peers);
        out << "}";
    }
    out << "\n]\n}\n";
    return out.str();
}

}  // namespace bench
