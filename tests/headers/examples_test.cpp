// The worked pixels in the public headers, each tried on every conversion that is declared below it, up to the next one:
//   Example: RGB (255, 0, 0) -> YCbCr (82, 90, 240) in a 1 x 1 image.
// A colour may be followed by a matrix, "by {...}", a number of levels, "by 5 levels", or a range, "from 0 to 255". Instead of a
// colour there may be rows of samples:
//   Example: luma 10 20, chroma 30 / 40 -> chroma 35 in a 2 x 2 image.
// with Cb and Cr in place of chroma where they differ. Where conversions differ, a part of their names stands before the colon or
// behind the result, and their examples in a row.
#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "harness/picture.h"
#include "harness/placement.h"
#include "rawsensor/mosaic_exports.h"
#include "zelcc/chroma.h"

namespace harness {
namespace {

struct Number {
    double value;
    double unit;  // of its last digit
};

// Digits in names don't count.
std::vector<Number> numbersIn(const std::string& text) {
    std::vector<Number> numbers;
    for (const char* p = text.c_str(); *p;) {
        if (std::isalpha(static_cast<unsigned char>(*p))) {
            while (std::isalnum(static_cast<unsigned char>(*p))) ++p;
        } else if (std::isdigit(static_cast<unsigned char>(*p)) ||
                   (*p == '-' && std::isdigit(static_cast<unsigned char>(p[1])))) {
            char* end;
            const double value = std::strtod(p, &end);
            const std::string digits(p, static_cast<const char*>(end));
            const size_t point = digits.find('.');
            numbers.push_back({value, point == std::string::npos ? 1 : std::pow(10, double(point) + 1 - double(digits.size()))});
            p = end;
        } else {
            ++p;
        }
    }
    return numbers;
}

// Rows of samples of a channel.
using Rows = std::vector<std::vector<Number>>;
using RowsOfChannels = std::map<int, Rows>;

RowsOfChannels rowsIn(const std::string& text) {
    static const std::regex form(R"(\b(luma|chroma|Cb|Cr)((?: \d+| /)+))");
    RowsOfChannels channels;
    for (std::sregex_iterator i(text.begin(), text.end(), form), end; i != end; ++i) {
        Rows rows;
        std::istringstream samples((*i)[2].str());
        for (std::string row; std::getline(samples, row, '/');) rows.push_back(numbersIn(row));
        const std::string name = (*i)[1];
        if (name == "luma") channels[0] = rows;
        if (name == "Cb" || name == "chroma") channels[1] = rows;
        if (name == "Cr" || name == "chroma") channels[2] = rows;
    }
    return channels;
}

struct Example {
    std::string text;
    std::string partOfName;
    std::vector<Number> from, to, coefficients, range;
    RowsOfChannels rowsFrom, rowsTo;
    ZelSize size{};
};

// The examples of a comment and the conversions that it is about.
struct Family {
    std::vector<Example> examples;
    std::vector<std::string> conversions;
};

std::string behind(const std::string& text, const std::string& word) {
    const size_t at = text.find(word);
    return at == std::string::npos ? "" : text.substr(at + word.size());
}

// The examples of one sentence.
std::vector<Example> parse(const std::string& sentence) {
    static const std::regex form(R"((?:Example: )?(\w*): ([^>;]*) -> ([^;]*?)(?: in an? (\d+) x (\d+) image)?(?:; |\.$|\. ))");
    static const std::regex resultOfSome(R"((\([^)]*\)) by (\w+))");
    std::vector<Example> examples;
    ZelSize size{};
    for (std::sregex_iterator i(sentence.begin(), sentence.end(), form), end; i != end; ++i) {
        const std::smatch& match = *i;
        if (match[4].matched) size = {std::stoi(match[4]), std::stoi(match[5])};
        const std::string left = match[2], right = match[3];
        Example example;
        example.text = match[0];
        if (match[1] != "Example") example.partOfName = match[1];
        example.from = numbersIn(left.substr(0, std::min(left.find(" by "), left.find(" from "))));
        example.coefficients = numbersIn(behind(left, " by "));
        example.range = numbersIn(behind(left, " from "));
        example.to = numbersIn(right);
        example.rowsFrom = rowsIn(left);
        example.rowsTo = rowsIn(right);
        example.size = size;
        std::sregex_iterator some(right.begin(), right.end(), resultOfSome);
        if (some == end) examples.push_back(example);
        for (; some != end; ++some) {
            example.to = numbersIn((*some)[1]);
            example.partOfName = (*some)[2];
            examples.push_back(example);
        }
    }
    return examples;
}

std::vector<std::string> conversionsIn(const std::string& declarations) {
    static const std::regex declaration(R"(ZEL_API ZelStatus (\w+)\()");
    std::vector<std::string> names;
    for (std::sregex_iterator i(declarations.begin(), declarations.end(), declaration), end; i != end; ++i)
        names.push_back((*i)[1]);
    return names;
}

std::vector<Family> familiesOf(const std::filesystem::path& header) {
    std::ifstream file(header);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::vector<Family> families;
    for (size_t at = text.find("* Example"); at != std::string::npos;) {
        const size_t end = std::min(text.find("\n *\n", at), text.find("\n */", at)), next = text.find("* Example", end);
        const std::string sentence = std::regex_replace(text.substr(at + 2, end - at - 2), std::regex(R"(\n \* +)"), " ");
        families.push_back({parse(sentence), conversionsIn(text.substr(end, next - end))});
        at = next;
    }
    return families;
}

// Of a conversion of slices, that of the whole image.
const model::Export* find(const std::string& name) {
    constexpr int wholeImage = zelSliceTop | zelSliceMiddle | zelSliceBottom;
    for (const auto exports : model::families())
        for (const model::Export& e : exports)
            if (e.name == name && (!e.slice.argument || (e.slice.argument & wholeImage) == wholeImage)) return &e;
    return nullptr;
}

// Calls function(T()) with the type of a layout's samples.
template <class Function>
auto withSampleType(const model::Layout& layout, Function function) {
    switch (layout.element) {
        case model::Element::s8:
            return function(int8_t());
        case model::Element::u16:
            return function(uint16_t());
        case model::Element::s16:
            return function(int16_t());
        case model::Element::s32:
            return function(int32_t());
        case model::Element::f32:
            return function(float());
        case model::Element::f64:
            return function(double());
        default:
            return function(uint8_t());
    }
}

bool holds(const model::Layout& layout, double value) {
    return withSampleType(layout, [&]<class T>(T) {
        using Limits = std::numeric_limits<T>;
        return value >= Limits::lowest() && value <= Limits::max() && (!Limits::is_integer || value == std::floor(value));
    });
}

void setSample(const model::Image& image, const model::Channel& channel, int x, int y, double value) {
    withSampleType(*image.layout, [&]<class T>(T) { image.store(channel, x, y, static_cast<T>(value)); });
}

double sampleOf(const model::Image& image, const model::Channel& channel, int x, int y) {
    return withSampleType(*image.layout, [&]<class T>(T) { return static_cast<double>(image.load<T>(channel, x, y)); });
}

int channelsOf(const model::Layout& layout) { return layout.channels[1].stride > 0 ? 3 : 1; }

// An image has one colour, or one of a single channel the values of its pixels in a row.
const Number* numberAt(const std::vector<Number>& numbers, const model::Layout& layout, int channel, int x, ZelSize size) {
    const size_t channels = channelsOf(layout);
    if (numbers.size() == channels) return &numbers[channel];
    if (channels == 1 && numbers.size() == static_cast<size_t>(size.width)) return &numbers[x];
    return nullptr;
}

bool haveShapeOf(const RowsOfChannels& channels, const model::Layout& layout, ZelSize size) {
    for (const auto& [channel, rows] : channels) {
        const model::Channel& c = layout.channels[channel];
        if (rows.size() != static_cast<size_t>(size.height >> c.yShift)) return false;
        for (const auto& row : rows)
            if (row.size() != static_cast<size_t>(size.width >> c.xShift)) return false;
    }
    return true;
}

// Whether a conversion has the channels, samples and coefficients that an example is about.
bool fits(const Example& example, const model::Export& tested) {
    if (std::string_view(tested.name).find(example.partOfName) == std::string_view::npos) return false;
    if (!example.rowsFrom.empty())
        return haveShapeOf(example.rowsFrom, tested.source, example.size) &&
               haveShapeOf(example.rowsTo, tested.destination, example.size);
    for (const Number& number : example.from)
        if (!holds(tested.source, number.value)) return false;
    const bool hasRange = tested.source.element == model::Element::f32 && tested.checksSteps && !tested.needsCoefficients;
    const bool isLinear = std::string(tested.name).ends_with("_C4R") && tested.needsCoefficients;
    const size_t coefficients = isLinear ? 16 : 12;
    return numberAt(example.from, tested.source, 0, 0, example.size) &&
           numberAt(example.to, tested.destination, 0, 0, example.size) &&
           (!tested.needsCoefficients || example.coefficients.size() == coefficients) && hasRange == (example.range.size() == 2);
}

// Calls function(channel, x, y, number) for the samples of an image that an example tells.
template <class Function>
void forEachSample(const model::Layout& layout, ZelSize size, const std::vector<Number>& colour, const RowsOfChannels& channels,
                   Function function) {
    for (int c = 0; c < channelsOf(layout) && channels.empty(); ++c)
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) function(layout.channels[c], x, y, *numberAt(colour, layout, c, x, size));
    for (const auto& [c, rows] : channels) {
        const model::Channel& channel = layout.channels[c];
        for (size_t y = 0; y < rows.size(); ++y)
            for (size_t x = 0; x < rows[y].size(); ++x)
                function(channel, static_cast<int>(x) << channel.xShift, static_cast<int>(y) << channel.yShift, rows[y][x]);
    }
}

void run(const Example& example, const model::Export& tested) {
    model::Parameters parameters = tested.firstParameters();
    if (example.coefficients.size() == 1) {
        parameters.integers = {0, zelDitherNone, static_cast<int32_t>(example.coefficients[0].value)};
    } else if (!example.coefficients.empty()) {
        std::array<double, 16> coefficients{};
        for (size_t i = 0; i < example.coefficients.size(); ++i) coefficients.at(i) = example.coefficients[i].value;
        parameters = model::withCoefficients(coefficients);
    }
    for (size_t i = 0; i < example.range.size(); ++i) parameters.numbers.at(i) = static_cast<float>(example.range[i].value);

    const ZelSize size = example.size;
    PictureMemory sourceMemory, destinationMemory;
    const Placement placement = suited(tested, aligned, size);
    const Picture destination = destinationMemory.lay(tested.destination, size, placement);
    const Picture source = tested.entry.isInPlace ? destination : sourceMemory.lay(tested.source, size, placement);
    forEachSample(tested.source, size, example.from, example.rowsFrom,
                  [&](const model::Channel& channel, int x, int y, Number sample) {
                      setSample(source.image(), channel, x, y, sample.value);
                  });
    const model::Call call{.source = source.operand(),
                           .destination = destination.operand(),
                           .size = size,
                           .slice = tested.slice.argument,
                           .parameters = parameters};
    ASSERT_EQ(tested.entry.call(call), zelStsNoErr);
    forEachSample(tested.destination, size, example.to, example.rowsTo,
                  [&](const model::Channel& channel, int x, int y, Number expected) {
                      EXPECT_NEAR(sampleOf(destination.image(), channel, x, y), expected.value, expected.unit / 2)
                          << "channel " << &channel - tested.destination.channels.data() << ", pixel (" << x << ", " << y << ")";
                  });
}

// Of mosaics: the grid and the samples row by row, and the pixels row by row, or one that all are equal to.
void run(const Example& example, const MosaicExport& tested) {
    const size_t pixels = static_cast<size_t>(example.size.width) * example.size.height, bytes = tested.elementBytes;
    ASSERT_EQ(example.from.size(), 1 + pixels);
    ASSERT_TRUE(example.to.size() == 3 || example.to.size() == 3 * pixels);
    const auto width = static_cast<int32_t>(example.size.width * bytes), bufferStep = static_cast<int32_t>(width + 6 * bytes);
    std::vector<uint16_t> source(pixels), destination(3 * pixels), buffer(30 * static_cast<size_t>(bufferStep));
    const auto at = [&](std::vector<uint16_t>& v, size_t i) { return reinterpret_cast<uint8_t*>(v.data()) + i * bytes; };
    for (size_t i = 0; i < pixels; ++i) {
        const auto sample = static_cast<uint16_t>(example.from[i + 1].value);
        std::memcpy(at(source, i), &sample, bytes);
    }
    const MosaicCall call{
        source.data(), {0, 0, example.size.width, example.size.height}, example.size,  width,     destination.data(),
        3 * width,     static_cast<int32_t>(example.from[0].value),     buffer.data(), bufferStep};
    ASSERT_EQ(tested.call(call), zelStsNoErr);
    for (size_t i = 0; i < 3 * pixels; ++i) {
        uint16_t sample = 0;
        std::memcpy(&sample, at(destination, i), bytes);
        EXPECT_EQ(sample, example.to[i % example.to.size()].value) << "pixel " << i / 3 << ", channel " << i % 3;
    }
}

TEST(HeaderExamples, AreWhatTheConversionsOfTheirFamilyGive) {
    std::set<std::string> withExample;
    for (const auto& header : std::filesystem::directory_iterator(ZELCC_HEADERS)) {
        for (const Family& family : familiesOf(header.path())) {
            SCOPED_TRACE(header.path().filename());
            for (const Example& example : family.examples) {
                SCOPED_TRACE(example.text);
                const size_t before = withExample.size();
                for (const std::string& name : family.conversions) {
                    SCOPED_TRACE(name);
                    if (const MosaicExport* mosaic = findMosaicExport(name)) {
                        withExample.insert(name);
                        run(example, *mosaic);
                        continue;
                    }
                    const model::Export* tested = find(name);
                    ASSERT_TRUE(tested) << "unknown";
                    if (!fits(example, *tested)) continue;
                    withExample.insert(name);
                    run(example, *tested);
                }
                EXPECT_GT(withExample.size(), before) << "fits nothing new";
            }
        }
    }
    for (const auto exports : model::families())
        for (const model::Export& e : exports) EXPECT_TRUE(withExample.contains(e.name)) << e.name << " has no example";
    for (const MosaicExport& e : mosaicExports) EXPECT_TRUE(withExample.contains(e.name)) << e.name << " has no example";
}

}  // namespace
}  // namespace harness
