#include "tools/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace tool {

namespace {

constexpr int width = 30;
constexpr auto interval = std::chrono::milliseconds(100);

}  // namespace

Progress::Progress(int64_t total, bool isQuiet)
    : total_(total), isShown_(!isQuiet && isatty(STDERR_FILENO) == 1), start_(Clock::now()), drawn_(start_) {}

Progress::~Progress() {
    if (!isShown_ || done_ == 0) return;
    draw(Clock::now());
    std::fputc('\n', stderr);
}

void Progress::advance() {
    ++done_;
    const auto now = Clock::now();
    if (!isShown_ || now - drawn_ < interval) return;
    drawn_ = now;
    draw(now);
}

void Progress::draw(Clock::time_point now) const {
    const double seconds = std::chrono::duration<double>(now - start_).count();
    const double rate = seconds > 0 ? static_cast<double>(done_) / seconds : 0;
    std::string bar, count = std::to_string(done_);
    if (total_ > 0) {
        const auto filled = static_cast<size_t>(std::min<int64_t>(width, width * done_ / total_));
        bar = '[' + std::string(filled, '#') + std::string(width - filled, '.') + "] ";
        count += '/' + std::to_string(total_);
    }
    std::fprintf(stderr, "\r%sframe %s, %.1f frames/s ", bar.c_str(), count.c_str(), rate);
    std::fflush(stderr);
}

}  // namespace tool
