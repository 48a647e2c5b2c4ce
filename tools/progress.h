// A line on a terminal that tells how far the work is. Nothing where the errors go into a file or pipe.
#pragma once

#include <chrono>
#include <cstdint>

namespace tool {

class Progress {
  public:
    Progress(int64_t total, bool isQuiet);  // -1 if the number of frames isn't known
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void advance();

  private:
    using Clock = std::chrono::steady_clock;
    void draw(Clock::time_point now) const;

    int64_t total_, done_ = 0;
    bool isShown_;
    Clock::time_point start_, drawn_;
};

}  // namespace tool
