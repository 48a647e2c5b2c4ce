// Fuzz target: all frames of a file, from memory and from a pipe. The readers may refuse what they like, with an error of the
// program's. What they give is the same both ways, and nothing of what stood in the memory before.
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "descriptors.h"
#include "harness/guarded_memory.h"
#include "pictures.h"
#include "tools/errors.h"
#include "tools/files.h"
#include "tools/frame.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t most);

namespace fuzz {
namespace {

constexpr size_t mostFrameBytes = 1 << 18, mostFrames = 256;

// The reader that the content asks for. Others are read by the one that their first byte picks, as if the caller had named it:
// raw files by the format and size in the bytes behind.
std::unique_ptr<tool::Reader> readerOf(tool::Source& source) {
    const std::string_view begin = source.peek(tool::longestMagic);
    if (const tool::FileKind* kind = tool::kindByContent(begin)) return kind->read(source);
    const auto byteAt = [&](size_t i) { return i < begin.size() ? static_cast<size_t>(static_cast<uint8_t>(begin[i])) : 0; };
    const size_t chosen = byteAt(0) % (tool::fileKinds().size() + 1);
    if (chosen < tool::fileKinds().size()) {
        source.take(std::min<size_t>(begin.size(), 1));
        return tool::fileKinds()[chosen].read(source);
    }
    const auto formats = catalog::formats();
    const tool::Format& format = formats[byteAt(1) % formats.size()];
    const tool::Size size{1 + static_cast<int>(byteAt(2)), 1 + static_cast<int>(byteAt(3))};
    return tool::rawReader(source, format, size);
}

struct Result {
    std::vector<Bytes> frames;
    bool isWhole = false;  // up to the end, with nothing left out
};

// The decoders are not instrumented, so a frame lies between pages that nobody may touch: against the one behind it.
Result readAll(const std::string& path, uint8_t before) {
    static harness::GuardedMemory memory;
    Result result;
    try {
        tool::Source source(path);
        const auto reader = readerOf(source);
        const size_t bytes = tool::fileBytes(reader->format(), reader->size());
        if (bytes > mostFrameBytes) return result;
        const auto frame = memory.pages(bytes).last(bytes);
        while (result.frames.size() < mostFrames) {
            std::ranges::fill(frame, before);
            if (!reader->next(frame.data())) {
                result.isWhole = reader->leftOut().empty();
                break;
            }
            result.frames.emplace_back(frame.begin(), frame.end());
        }
    } catch (const tool::Error&) {
    }
    return result;
}

// Pictures behind the only one of a file are left out, and those in a pipe are read.
std::optional<std::string> difference(const Result& file, const Result& pipe) {
    if (file.frames.size() > pipe.frames.size() || (file.isWhole && file.frames.size() < pipe.frames.size()))
        return std::to_string(file.frames.size()) + " frames of a file and " + std::to_string(pipe.frames.size()) + " of a pipe";
    for (size_t i = 0; i < file.frames.size(); ++i)
        if (file.frames[i] != pipe.frames[i]) return "frame " + std::to_string(i + 1) + " depends on what its memory had before";
    return std::nullopt;
}

}  // namespace
}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::span bytes(data, size);
    if (size > fuzz::pipeRoom) return 0;
    const auto fault =
        fuzz::difference(fuzz::readAll(fuzz::fileOf(bytes).path(), 0x00), fuzz::readAll(fuzz::pipeOf(bytes).path(), 0xff));
    if (fault) {
        std::fprintf(stderr, "%s\n", fault->c_str());
        std::abort();
    }
    return 0;
}

// The engine's own changes never meet a checksum. Files to begin with come from here too, so that none have to be kept.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t most, unsigned seed) {
    const auto mutate = [](fuzz::Bytes& bytes) {
        const size_t used = bytes.size();
        bytes.resize(used + 64);
        bytes.resize(LLVMFuzzerMutate(bytes.data(), used, bytes.size()));
    };
    fuzz::Choices choices(reinterpret_cast<const uint8_t*>(&seed), sizeof seed);
    fuzz::Bytes file(data, data + size);
    const int way = choices.below(16);
    if (size < 2 || way < 2) {
        file = fuzz::writtenFile(choices);
    } else if (way < 4) {
        const fuzz::Bytes& next = fuzz::writtenFileLike(file, choices);
        file.insert(file.end(), next.begin(), next.end());
    } else if (way < 12 && fuzz::isPng(file)) {
        fuzz::changeChunk(file, mutate, choices);
    } else {
        mutate(file);
        if (way < 15 && fuzz::isPng(file)) fuzz::mendChecksums(file);
    }
    file.resize(std::min(file.size(), most));
    std::ranges::copy(file, data);
    return file.size();
}
