#include "pictures.h"

#include "descriptors.h"
#include "tools/files.h"
#include "tools/frame.h"

namespace fuzz {
namespace {

Bytes written(const tool::FileKind& kind, const tool::Format& format, tool::Size size) {
    const Descriptor file = memoryFile();
    tool::Sink sink(file.path());
    const auto writer = kind.write(sink, {format, size, {}, {"709-full", true, {}}});
    harness::Random random(1);
    Bytes frame(tool::fileBytes(format, size));
    for (int i = 0; i < (kind.holdsMany ? 2 : 1); ++i) {
        random.fill(frame, harness::Content::extremes);
        writer->write(frame.data());
    }
    sink.close();
    return bytesOf(file);
}

using Files = std::vector<Bytes>;

const std::vector<Files>& filesByKind() {
    static const std::vector<Files> files = [] {
        std::vector<Files> made;
        for (const tool::FileKind& kind : tool::fileKinds()) {
            Files& same = made.emplace_back();
            for (const std::string_view name : kind.formats)
                for (const tool::Size size : {tool::Size{1, 1}, tool::Size{13, 9}})
                    same.push_back(written(kind, tool::formatNamed(name), size));
        }
        return made;
    }();
    return files;
}

template <class T>
const T& anyOf(const std::vector<T>& values, Choices& choices) {
    return values[static_cast<size_t>(choices.below(static_cast<int>(values.size())))];
}

}  // namespace

const Bytes& writtenFile(Choices& choices) { return anyOf(anyOf(filesByKind(), choices), choices); }

const Bytes& writtenFileLike(const Bytes& file, Choices& choices) {
    const std::string_view begin(reinterpret_cast<const char*>(file.data()), std::min(file.size(), tool::longestMagic));
    const tool::FileKind* kind = tool::kindByContent(begin);
    if (!kind) return writtenFile(choices);
    return anyOf(filesByKind()[static_cast<size_t>(kind - tool::fileKinds().data())], choices);
}

}  // namespace fuzz
