// The worked pixels in the public headers, each tried on every conversion that is declared below it, up to the next one:
//   Example: RGB (255, 0, 0) -> YCbCr (82, 90, 240) in a 1 x 1 image.
// A colour may be followed by a matrix, "by {...}", or a range, "from 0 to 255". Where conversions differ, a part of their names
// stands before the colon or behind the result, and their examples in a row.
#include <gtest/gtest.h>

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <regex>
#include <string>

#include "harness/picture.h"
#include "harness/placement.h"

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

struct Example {
    std::string text;
    std::string partOfName;
    std::vector<Number> from, to, coefficients, range;
    ZelSize size{};
    std::vector<std::string> conversions;
};

std::string behind(const std::string& text, const std::string& word) {
    const size_t at = text.find(word);
    return at == std::string::npos ? "" : text.substr(at + word.size());
}

// The examples of one sentence.
std::vector<Example> parse(const std::string& sentence) {
    static const std::regex form(R"((\w*): ([^>;]*) -> ([^;]*?)(?: in an? (\d+) x (\d+) image)?(?:; |\.$|\. ))");
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

// Examples of pixels. What is told in other words, of rows and columns of chroma, has tests of its own.
std::vector<Example> examplesOf(const std::filesystem::path& header) {
    std::ifstream file(header);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    std::vector<Example> examples;
    for (size_t at = text.find("* Example"); at != std::string::npos;) {
        const size_t end = std::min(text.find("\n *\n", at), text.find("\n */", at)), next = text.find("* Example", end);
        const std::string sentence = std::regex_replace(text.substr(at + 2, end - at - 2), std::regex(R"(\n \* +)"), " ");
        for (Example& example : parse(sentence)) {
            for (const std::string& name : conversionsIn(text.substr(end, next - end)))
                if (name.find(example.partOfName) != std::string::npos) example.conversions.push_back(name);
            examples.push_back(example);
        }
        at = next;
    }
    return examples;
}

const model::Export* find(const std::string& name) {
    for (const auto exports : {model::lumachromaExports(), model::chromaExports(), model::intensityExports()})
        for (const model::Export& e : exports)
            if (e.name == name) return &e;
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

// Whether a conversion has the channels, samples and coefficients that an example is about.
bool fits(const Example& example, const model::Export& tested) {
    for (const Number& number : example.from)
        if (!holds(tested.source, number.value)) return false;
    const bool hasRange = tested.source.element == model::Element::f32 && tested.checksSteps && !tested.needsCoefficients;
    const bool isLinear = std::string(tested.name).ends_with("_C4R") && tested.needsCoefficients;
    const size_t coefficients = isLinear ? 16 : 12;
    return numberAt(example.from, tested.source, 0, 0, example.size) &&
           numberAt(example.to, tested.destination, 0, 0, example.size) &&
           (!tested.needsCoefficients || example.coefficients.size() == coefficients) && hasRange == (example.range.size() == 2);
}

// Calls function(channel, number of the channel, x, y) for the colour samples of an image.
template <class Function>
void forEachSample(const model::Layout& layout, ZelSize size, Function function) {
    for (int c = 0; c < channelsOf(layout); ++c)
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) function(layout.channels[c], c, x, y);
}

void run(const Example& example, const model::Export& tested) {
    model::Parameters parameters = tested.firstParameters();
    if (!example.coefficients.empty()) {
        std::array<double, 16> coefficients{};
        for (size_t i = 0; i < example.coefficients.size(); ++i) coefficients.at(i) = example.coefficients[i].value;
        parameters = model::withCoefficients(coefficients);
    }
    for (size_t i = 0; i < example.range.size(); ++i) parameters.numbers.at(i) = static_cast<float>(example.range[i].value);

    const ZelSize size = example.size;
    PictureMemory sourceMemory, destinationMemory;
    const Picture destination = destinationMemory.lay(tested.destination, size, aligned);
    const Picture source = tested.entry.isInPlace ? destination : sourceMemory.lay(tested.source, size, aligned);
    forEachSample(tested.source, size, [&](const model::Channel& channel, int c, int x, int y) {
        setSample(source.image(), channel, x, y, numberAt(example.from, tested.source, c, x, size)->value);
    });
    const model::Call call{.source = source.operand(),
                           .destination = destination.operand(),
                           .size = size,
                           .slice = tested.slice.argument,
                           .parameters = parameters};
    ASSERT_EQ(tested.entry.call(call), zelStsNoErr);
    forEachSample(tested.destination, size, [&](const model::Channel& channel, int c, int x, int y) {
        const Number& expected = *numberAt(example.to, tested.destination, c, x, size);
        EXPECT_NEAR(sampleOf(destination.image(), channel, x, y), expected.value, expected.unit / 2)
            << "channel " << c << ", pixel (" << x << ", " << y << ")";
    });
}

// Every example has to fit most of its family, and each header some.
TEST(HeaderExamples, AreWhatTheConversionsOfTheirFamilyGive) {
    size_t examples = 0;
    for (const auto& header : std::filesystem::directory_iterator(ZELCC_HEADERS)) {
        for (const Example& example : examplesOf(header.path())) {
            ++examples;
            SCOPED_TRACE(header.path().filename().string() + ", " + example.text);
            size_t fitting = 0;
            for (const std::string& name : example.conversions) {
                SCOPED_TRACE(name);
                const model::Export* tested = find(name);
                ASSERT_TRUE(tested) << "unknown";
                if (!fits(example, *tested)) continue;
                ++fitting;
                run(example, *tested);
            }
            EXPECT_GT(2 * fitting, example.conversions.size());
        }
    }
    EXPECT_GE(examples, 15u);
}

}  // namespace
}  // namespace harness
