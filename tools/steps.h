// The functions as edges between formats: which of them a conversion may take, and what each is good for.
#pragma once

#include <map>

#include "tools/way.h"

namespace tool {

// The wishes as bits that a way has to collect.
class Demands {
  public:
    explicit Demands(const Wishes& wishes);

    int all() const { return (1 << names_.size()) - 1; }
    // The bits that the step collects; nothing if the wishes forbid it.
    std::optional<int> metBy(const Step& step) const;
    std::optional<int> metByVideo(const Format& from, const Format& to) const;
    const std::vector<std::string>& names() const { return names_; }

  private:
    int bit(const std::string& name) const;
    std::optional<int> metByVerb(const Conversion& c) const;
    std::optional<int> metByMethod(const Conversion& c) const;

    const Wishes& wishes_;
    std::vector<std::string> names_;
};

Step stepOf(const Conversion& conversion);

// All functions that a conversion may be made of.
const std::vector<Step>& allSteps();

}  // namespace tool
