// A PNG picture is a signature and chunks: the length of the content, a name, the content, and the checksum of both.
#include <zlib.h>

#include <string_view>

#include "pictures.h"

namespace fuzz {
namespace {

constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr size_t numberBytes = 4, nameBytes = 4, frameBytes = 2 * numberBytes + nameBytes;  // of a chunk without content

// Chunks that may stand in any picture, with the sizes that they usually have.
struct Usual {
    std::string_view name;
    size_t bytes;
};
constexpr Usual usual[] = {{"tRNS", 2},   {"tRNS", 6},  {"tRNS", 40}, {"PLTE", 3},  {"PLTE", 768}, {"gAMA", 4},  {"cHRM", 32},
                           {"sRGB", 1},   {"sBIT", 1},  {"sBIT", 3},  {"bKGD", 2},  {"bKGD", 6},   {"pHYs", 9},  {"tIME", 7},
                           {"iCCP", 140}, {"sPLT", 40}, {"hIST", 20}, {"tEXt", 30}, {"zTXt", 30},  {"iTXt", 30}, {"eXIf", 40},
                           {"oFFs", 9},   {"IHDR", 13}, {"IDAT", 30}, {"IEND", 0}};

// Where the first chunk tells the kind of pixels.
constexpr size_t headerBytes = 13, depthAt = 8, colourAt = 9, interlacingAt = 12;

void changeKind(Bytes& header, Choices& choices) {
    header[depthAt] = choices.oneOf<uint8_t>({1, 2, 4, 8, 16});
    header[colourAt] = choices.oneOf<uint8_t>({0, 2, 3, 4, 6});  // gray, RGB, palette, and the first two with alpha
    header[interlacingAt] = choices.flag();
}

bool isSignature(std::span<const uint8_t> bytes) {
    return bytes.size() >= signature.size() && std::equal(signature.begin(), signature.end(), bytes.begin(),
                                                          [](char a, uint8_t b) { return static_cast<uint8_t>(a) == b; });
}

uint32_t numberAt(const uint8_t* at) {
    return uint32_t{at[0]} << 24 | uint32_t{at[1]} << 16 | uint32_t{at[2]} << 8 | uint32_t{at[3]};
}

void putNumber(uint8_t* at, uint32_t number) {
    for (int shift = 24; shift >= 0; shift -= 8) *at++ = static_cast<uint8_t>(number >> shift);
}

void mendChunk(std::span<uint8_t> chunk) {
    const size_t checked = chunk.size() - 2 * numberBytes;
    putNumber(chunk.data(), static_cast<uint32_t>(checked - nameBytes));
    putNumber(chunk.data() + numberBytes + checked,
              static_cast<uint32_t>(crc32(0, chunk.data() + numberBytes, static_cast<uInt>(checked))));
}

// The chunks of all pictures, one behind the other; the last may have too large a length.
std::vector<std::span<uint8_t>> chunksOf(std::span<uint8_t> file) {
    std::vector<std::span<uint8_t>> chunks;
    while (file.size() >= frameBytes) {
        if (isSignature(file)) {
            file = file.subspan(signature.size());
            continue;
        }
        const size_t bytes = std::min(file.size(), size_t{numberAt(file.data())} + frameBytes);
        chunks.push_back(file.first(bytes));
        file = file.subspan(bytes);
    }
    return chunks;
}

Bytes chunkOf(std::span<const uint8_t> name, std::span<const uint8_t> content) {
    Bytes chunk(frameBytes + content.size());
    std::ranges::copy(name, chunk.begin() + numberBytes);
    std::ranges::copy(content, chunk.begin() + numberBytes + nameBytes);
    mendChunk(chunk);
    return chunk;
}

}  // namespace

bool isPng(std::span<const uint8_t> file) { return isSignature(file); }

void changeChunk(Bytes& file, const std::function<void(Bytes&)>& change, Choices& choices) {
    const auto chunks = chunksOf(file);
    if (chunks.empty()) return;
    const std::span<uint8_t> old = chunks[static_cast<size_t>(choices.below(static_cast<int>(chunks.size())))];
    const auto begin = file.begin() + (old.data() - file.data()), end = begin + static_cast<std::ptrdiff_t>(old.size());
    Bytes replacement;
    switch (choices.below(8)) {
        case 0:  // no chunk
            break;
        case 1:
        case 2:
        case 3: {  // another one before it
            const Usual& other = choices.oneOf(usual);
            Bytes content(choices.below(4) == 0 ? static_cast<size_t>(choices.below(800)) : other.bytes);
            choices.random().fill(content, harness::Content::uniform);
            replacement = chunkOf({reinterpret_cast<const uint8_t*>(other.name.data()), nameBytes}, content);
            replacement.insert(replacement.end(), begin, end);
            break;
        }
        default: {
            Bytes content(begin + numberBytes + nameBytes, end - numberBytes);
            if (content.size() == headerBytes && choices.flag())
                changeKind(content, choices);
            else
                change(content);
            replacement = chunkOf(old.subspan(numberBytes, nameBytes), content);
        }
    }
    Bytes changed(file.begin(), begin);
    changed.insert(changed.end(), replacement.begin(), replacement.end());
    changed.insert(changed.end(), end, file.end());
    file = std::move(changed);
}

void mendChecksums(std::span<uint8_t> file) {
    for (const auto chunk : chunksOf(file)) mendChunk(chunk);
}

}  // namespace fuzz
