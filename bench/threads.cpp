#include "threads.h"

#include <sched.h>

#include <algorithm>
#include <barrier>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <thread>
#include <vector>

namespace bench {

namespace {

constexpr int stripMultiple = 16;  // rows: whole sites of every layout

// The same image without the rows above `first` and from `end` on.
Image rowsOf(Image image, int first, int end) {
    const auto shapes = planesOf(image.layout);
    for (size_t i = 0; i < shapes.size(); ++i) image.planes[i].data += ptrdiff_t{image.planes[i].step} * (first / shapes[i].rows);
    image.size.height = end - first;
    return image;
}

// On the processor of that number. Systems move threads to free ones only after some time, which is more than a slice has.
void stayOn(size_t number) {
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(number, &set);
    sched_setaffinity(0, sizeof set, &set);
}

// Threads that wait for work, as a program's pool does, each with a part of its own.
class Team {
  public:
    explicit Team(std::vector<Call> parts) : parts_(std::move(parts)), start_(size()), end_(size()) {
        stayOn(0);
        for (size_t i = 1; i < parts_.size(); ++i)
            threads_.emplace_back([this, i] {
                stayOn(i);
                for (;;) {
                    start_.arrive_and_wait();
                    if (isOver_) return;
                    parts_[i]();
                    end_.arrive_and_wait();
                }
            });
    }
    Team(const Team&) = delete;
    ~Team() {
        isOver_ = true;
        start_.arrive_and_wait();
    }

    void run() {
        start_.arrive_and_wait();
        parts_[0]();
        end_.arrive_and_wait();
    }

  private:
    ptrdiff_t size() const { return static_cast<ptrdiff_t>(parts_.size()); }

    std::vector<Call> parts_;
    std::barrier<> start_, end_;
    bool isOver_ = false;
    std::vector<std::jthread> threads_;
};

double secondsOf(Team& team, const Effort& effort) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> seconds;
    for (int i = 0; i < 3; ++i) team.run();
    const auto begin = Clock::now();
    do {
        const auto start = Clock::now();
        team.run();
        seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    } while (std::chrono::duration<double>(Clock::now() - begin).count() < effort.sliceSeconds);
    const auto middle = seconds.begin() + static_cast<ptrdiff_t>(seconds.size() / 2);
    std::ranges::nth_element(seconds, middle);
    return *middle;
}

// Medians over the rounds, of one thread and of two.
struct Pair {
    double one, two;
};

Pair measure(const std::function<Call(int first, int end)>& part, int height, const Effort& effort) {
    const int middle = height / 2 / stripMultiple * stripMultiple;
    std::vector<double> one, two;
    for (int round = 0; round < effort.rounds; ++round) {
        Team single({part(0, height)}), both({part(0, middle), part(middle, height)});
        one.push_back(secondsOf(single, effort));
        two.push_back(secondsOf(both, effort));
    }
    std::ranges::sort(one);
    std::ranges::sort(two);
    return {one[one.size() / 2], two[two.size() / 2]};
}

}  // namespace

void runThreads(std::span<const Export> rows, std::span<const Size> sizes, const Effort& effort) {
    std::printf("%-36s %9s %8s %8s %7s %18s %7s\n", "export", "size", "ms, one", "two", "times", "GB/s, two (copy)", "copy");
    for (const Export& row : rows) {
        for (const Size size : sizes) {
            const OwnImage source(row.task.source, size), destination(row.task.destination, size);
            paint(source.image);
            const Pair own = measure(
                [&](int first, int end) {
                    return row.bind(rowsOf(source.image, first, end), rowsOf(destination.image, first, end));
                },
                size.height, effort);

            const double bytes = double(bytesOf(row.task.source, size) + bytesOf(row.task.destination, size));
            const size_t copied = static_cast<size_t>(bytes) / 2, rowBytes = copied / static_cast<size_t>(size.height);
            const Memory from = allocate(copied), to = allocate(copied);
            const Pair copy = measure(
                [&](int first, int end) {
                    const size_t offset = rowBytes * static_cast<size_t>(first),
                                 count = rowBytes * static_cast<size_t>(end - first);
                    return [to = to.get() + offset, from = from.get() + offset, count] {
                        std::memcpy(to, from, count);
                        return 0;
                    };
                },
                size.height, effort);
            std::printf("%-36s %4dx%-4d %8.3f %8.3f %7.2f %9.1f (%6.1f) %7.2f\n", row.name.c_str(), size.width, size.height,
                        own.one * 1e3, own.two * 1e3, own.one / own.two, bytes / own.two / 1e9, bytes / copy.two / 1e9,
                        copy.one / copy.two);
            std::fflush(stdout);
        }
    }
}

}  // namespace bench
