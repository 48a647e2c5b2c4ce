// Files of all kinds: what is written is read again, and what stops short is told.
#include "tools/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "tools/errors.h"
#include "tools/frame.h"

namespace tool {
namespace {

constexpr Size size{13, 7};
constexpr int frameCount = 3;

struct Case {
    const FileKind* kind;
    const Format* format;
};

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const FileKind& kind : fileKinds())
        for (std::string_view name : kind.formats) cases.push_back({&kind, &formatNamed(name)});
    return cases;
}

class Files : public testing::TestWithParam<Case> {
  protected:
    Files() : path_(testing::TempDir() + "zelcc-" + std::string(format().name) + '-' + std::string(kind().name)) {}
    ~Files() override { std::filesystem::remove(path_); }

    const FileKind& kind() const { return *GetParam().kind; }
    const Format& format() const { return *GetParam().format; }

    // Smooth enough for a codec with losses; floats are numbers whatever their bits.
    std::vector<uint8_t> frame(int number) const {
        std::vector<uint8_t> bytes(fileBytes(format(), size));
        for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(number * 16 + static_cast<int>(i / 7) % 64);
        if (format().element == Element::u1)
            for (size_t i = 1; i < bytes.size(); i += 2) bytes[i] &= 0xf8;  // 13 pixels
        return bytes;
    }

    void writeAll() const {
        Sink sink(path_);
        const auto writer =
            kind().write(sink, {format(), size, {"30000:1001", "1:1", "t"}, {"709-full", true, {Place::first, Place::centre}}});
        for (int i = 0; i < frameCount; ++i) writer->write(frame(i).data());
        sink.close();
    }

    std::string path_;
};

TEST_P(Files, ReadWhatTheyWrite) {
    writeAll();
    Source source(path_);
    ASSERT_EQ(kindByContent(source.peek(longestMagic)), kindNamed(kind().name));
    const auto reader = kind().read(source);
    const bool isExpanded = format().name == "monob" && kind().name == "png";  // bits come back as bytes
    ASSERT_EQ(reader->size(), size);
    if (isExpanded) {
        EXPECT_EQ(reader->format().name, "gray");
        return;
    }
    ASSERT_EQ(reader->format().name, format().name);
    if (kind().name == "y4m") {
        EXPECT_EQ(reader->timing().rate, "30000:1001");
        EXPECT_EQ(reader->timing().interlacing, "t");
        EXPECT_EQ(reader->colour().matrix, "709-full");
        EXPECT_EQ(reader->colour().isFullRange, true);
        if (format().name == "yuv420p") {
            EXPECT_EQ(reader->colour().location, (Location{Place::first, Place::centre}));
        }
    }
    std::vector<uint8_t> bytes(fileBytes(format(), size));
    for (int i = 0; i < frameCount; ++i) {
        ASSERT_TRUE(reader->next(bytes.data()));
        if (format().element == Element::u1)
            for (size_t k = 1; k < bytes.size(); k += 2) bytes[k] &= 0xf8;
        const auto expected = frame(i);
        const int most = kind().name == "jpeg" ? 24 : 0;
        for (size_t k = 0; k < bytes.size(); ++k) ASSERT_NEAR(bytes[k], expected[k], most) << "frame " << i << " byte " << k;
    }
    EXPECT_FALSE(reader->next(bytes.data()));
}

TEST_P(Files, TellWhichFrameStopsShort) {
    writeAll();
    std::filesystem::resize_file(path_, std::filesystem::file_size(path_) - 4);
    Source source(path_);
    const auto reader = kind().read(source);
    std::vector<uint8_t> bytes(fileBytes(reader->format(), size));
    ASSERT_TRUE(reader->next(bytes.data()));
    ASSERT_TRUE(reader->next(bytes.data()));
    try {
        reader->next(bytes.data());
        // A JPEG picture without its last bytes is known by its end alone.
        FAIL();
    } catch (const DataError& e) {
        EXPECT_NE(std::string(e.what()).find("frame 3"), std::string::npos) << e.what();
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, Files, testing::ValuesIn(allCases()),
                         [](const auto& i) { return std::string(i.param.kind->name) + '_' + std::string(i.param.format->name); });

struct Refused {
    const char *name, *content;
    ExitCode code = failure;
};
class RefusedFiles : public testing::TestWithParam<Refused> {};

TEST_P(RefusedFiles, AreErrors) {
    const std::string path = testing::TempDir() + "zelcc-refused-" + GetParam().name;
    std::ofstream(path) << GetParam().content;
    Source source(path);
    const FileKind* kind = kindByContent(source.peek(longestMagic));
    ASSERT_NE(kind, nullptr);
    std::vector<uint8_t> bytes(1 << 20);
    try {
        const auto reader = kind->read(source);
        while (reader->next(bytes.data())) {
        }
        ADD_FAILURE() << "it was read";
    } catch (const Error& e) {
        EXPECT_EQ(e.code, GetParam().code) << e.what();
    }
    std::filesystem::remove(path);
}

const Refused refused[] = {
    {"NoSize", "YUV4MPEG2 F25:1\nFRAME\n"},
    {"Endless", "YUV4MPEG2 W2 H2"},
    {"WordyWidth", "YUV4MPEG2 Wabc H2\n"},
    {"NoSampling", "YUV4MPEG2 W2 H2 C421\n"},
    {"NoFrame", "YUV4MPEG2 W2 H2 Cmono\nXXXX"},
    {"WordyScale", "P5\n1 1\nwhite\n12"},
    {"Negative", "P5\n-1 1\n255\n1"},
    {"Short", "P6\n2 2\n255\nabc"},
    {"HeaderAlone", "P5 "},
    {"Png", "\x89PNG\r\n\x1a\nrubbish"},
    {"Jpeg", "\xff\xd8\xff\xe0rubbish"},
    {"Depth", "YUV4MPEG2 W2 H2 C420p11\n"},
    {"GrayDepth", "YUV4MPEG2 W2 H2 Cmono24\n"},
    {"DepthOfNoFile", "YUV4MPEG2 W2 H2 C440p12\n", noWay},
    {"Sides", "YUV4MPEG2 W2147483647 H2147483647\n", noWay},  // whose bytes no number holds
    {"SidesOfPnm", "P6\n2147483647 2147483647\n255\n", noWay},
    {"Ascii", "P3\n1 1\n255\n1 2 3\n", noWay},
    {"Scale", "P5\n1 1\n300\n12", noWay},
    {"OtherSize", "P5\n1 1\n255\naP5\n1 2\n255\nab", noWay},
};
INSTANTIATE_TEST_SUITE_P(Contents, RefusedFiles, testing::ValuesIn(refused),
                         [](const auto& i) { return std::string(i.param.name); });

}  // namespace
}  // namespace tool
