// What conversions made of a picture: how each went, and the pictures of those that succeeded.
#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "measured_call.h"
#include "picture.h"

struct Study {
    // Returns whether the call succeeded.
    template <class Call>
    bool call(const std::string& name, ZelSize size, Call conversion) {
        conversions.push_back(timed(name.c_str(), size, conversion));
        return conversions.back().status >= 0;
    }

    void keep(const std::string& name, Picture picture) { pictures.emplace_back(name, std::move(picture)); }

    bool isComplete() const {
        return std::all_of(conversions.begin(), conversions.end(), [](const Conversion& one) { return one.status >= 0; });
    }

    std::vector<Conversion> conversions;
    std::vector<std::pair<std::string, Picture>> pictures;
};
