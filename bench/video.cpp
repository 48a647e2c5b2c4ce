// libzelvideo beside libyuv, swscale and zimg where they have the task: medians of one process, in which the contenders take
// turns in random order. --size=WxH, --turns=N, --task=PART of a name; --least takes the least instead, for a machine that is
// shared; --plans measures the plans. ZELCC_BENCH_LEVEL picks the level, for the peers as well.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "level.h"
#include "video_peers.h"

namespace bench::video {
namespace {

double secondsOf(const Call& call) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    call();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

struct Contender {
    std::string name;
    Call call;
    std::vector<double> seconds;
    double quantile(size_t half) {
        const auto middle = seconds.begin() + static_cast<ptrdiff_t>(seconds.size() * half / 2);
        std::nth_element(seconds.begin(), middle, seconds.end());
        return *middle;
    }
};

Contender ours(const Task& task, const Frame& source, const Frame& destination) {
    auto plan = std::make_shared<ZelvPlan>();
    const ZelStatus status = zelvMakePlan(plan.get(), &task.from, &task.to, nullptr);
    if (status != zelStsNoErr) {
        std::fprintf(stderr, "%s: status %d\n", task.name, status);
        std::exit(1);
    }
    return {"zelvideo",
            [plan, &source, &destination] {
                zelvConvert(plan.get(), source.readable(), source.steps, destination.planes, destination.steps, source.size);
            },
            {}};
}

void measure(const Task& task, ZelSize size, int turns, bool least, std::mt19937& random) {
    const Frame source(task.from, size), destination(task.to, size);
    std::vector<Contender> contenders{ours(task, source, destination)};
    for (Peer& peer : peersOf(task, source, destination)) contenders.push_back({std::move(peer.name), std::move(peer.call), {}});
    std::vector<size_t> order(contenders.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = i;
    for (int turn = 0; turn < turns; ++turn) {
        std::shuffle(order.begin(), order.end(), random);
        for (const size_t i : order) {
            contenders[i].call();
            for (int n = 0; n < 3; ++n) contenders[i].seconds.push_back(secondsOf(contenders[i].call));
        }
    }
    const size_t half = least ? 0 : 1;
    const double mine = contenders[0].quantile(half), pixels = double{size.width * 1.0} * size.height;
    std::printf("%-30s %8.3f ns/pixel", task.name, mine / pixels * 1e9);
    for (size_t i = 1; i < contenders.size(); ++i)
        std::printf("  %s x%.2f", contenders[i].name.c_str(), contenders[i].quantile(half) / mine);
    std::printf("\n");
}

void measurePlan(const Task& task) {
    ZelvPlan plan;
    constexpr int count = 20000;
    const double seconds = secondsOf([&] {
        for (int i = 0; i < count; ++i) zelvMakePlan(&plan, &task.from, &task.to, nullptr);
    });
    std::printf("%-30s %8.0f ns\n", task.name, seconds / count * 1e9);
}

}  // namespace
}  // namespace bench::video

int main(int argc, char** argv) {
    ZelSize size{1920, 1080};
    int turns = 15;
    const char* part = "";
    bool plans = false, least = false;
    for (int i = 1; i < argc; ++i) {
        const char* const value = std::strchr(argv[i], '=') ? std::strchr(argv[i], '=') + 1 : "";
        if (std::strncmp(argv[i], "--size=", 7) == 0)
            std::sscanf(value, "%dx%d", &size.width, &size.height);
        else if (std::strncmp(argv[i], "--turns=", 8) == 0)
            turns = std::atoi(value);
        else if (std::strncmp(argv[i], "--task=", 7) == 0)
            part = value;
        else if (std::strcmp(argv[i], "--plans") == 0)
            plans = true;
        else if (std::strcmp(argv[i], "--least") == 0)
            least = true;
        else
            return std::fprintf(stderr, "unknown option %s\n", argv[i]), 2;
    }
    try {
        bench::selectedLevel();
    } catch (const std::exception& error) {
        return std::fprintf(stderr, "%s\n", error.what()), 2;
    }
    std::mt19937 random(std::random_device{}());
    for (const auto& task : bench::video::tasks) {
        if (!std::strstr(task.name, part)) continue;
        plans ? bench::video::measurePlan(task) : bench::video::measure(task, size, turns, least, random);
    }
}
