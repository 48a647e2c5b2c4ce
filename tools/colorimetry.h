// By which matrix, range, fields and chroma location a conversion goes: what the caller asks for and what the file says of
// itself, brought together. What a file says is obeyed or refused, unless the caller overrules it.
#pragma once

#include "tools/convert.h"
#include "tools/files.h"

namespace tool {

// What a file says; of raw files nothing.
struct Stated {
    std::string name;
    Colour colour;
    std::string interlacing = "p";  // as in a Y4M header
};

struct Decision {
    const Format& to;
    Wishes wishes;
    Way way;
    // Of the output.
    Colour colour;
    std::string interlacing;
};

// Words of FFmpeg as those that are known here, such as bt2020nc and tv as 2020 and limited; others as they are.
std::string withOwnNames(const std::string& option);

// What is wrong with the word of an option, or two with a colon between them; empty if nothing is.
std::string refusedMatrix(const std::string& text);
std::string refusedRange(const std::string& text);
std::string refusedLocation(const std::string& text);

// Whether even and odd rows were taken at different times, by the file or the caller.
bool hasFields(const ConvertOptions& options, const Stated& stated);

// Throws an UnsupportedError or NoWayError where no functions do what is asked for or stated.
Decision decide(const ConvertOptions& options, const Stated& stated, const Format& from);

}  // namespace tool
