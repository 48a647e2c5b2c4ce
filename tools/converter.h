// Runs a way over images: cuts them, fills them up to whole sites, and shares their strips among threads.
#pragma once

#include <vector>

#include "tools/frame.h"
#include "tools/way.h"
#include "tools/workers.h"

namespace tool {

struct Job {
    const Format& from;  // of the file
    const Format& to;
    Size size;  // of the source
    Rect part;  // of the source that is converted
    Way way;
    Wishes wishes;
};

class Converter {
  public:
    Converter(Job job, int threads);

    size_t sourceBytes() const { return fileBytes(job_.from, job_.size); }
    size_t targetBytes() const { return fileBytes(job_.to, job_.part.size); }
    // Both as in a file. The source is not changed.
    void convert(uint8_t* source, uint8_t* target);

  private:
    // What a thread needs: the images between the steps, and room for a function.
    struct Room {
        std::vector<Frame> frames;
        Buffer temporary;
    };

    void convertStrip(const Planes& source, const Planes& target, int strip, int worker);
    const void* coefficientsOf(const Step& step) const;
    void apply(const Step& step, const Planes& source, const Planes& target, Size size, Room& room) const;

    Job job_;
    Size laid_;  // the part in whole sites
    int stripRows_;
    Frame source_, target_;  // in whole sites, where files have others
    std::vector<float> twist_, weights_;
    ZelvPlan plan_{};  // of the step by libzelvideo, if there is one
    Workers workers_;
    std::vector<Room> rooms_;
};

}  // namespace tool
