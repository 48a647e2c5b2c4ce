// Bytes from a file or pipe and to one.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tools/replacement.h"

namespace tool {

class Source {
  public:
    explicit Source(const std::string& path);  // "-" is the standard input
    ~Source();
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    const std::string& name() const { return name_; }
    int64_t fileSize() const { return fileSize_; }  // -1 of what is no plain file
    // Whether the path of a sink leads to this very file, by whatever name.
    bool isAt(const std::string& sinkPath) const;
    // From another thread: whoever waits for more bytes finds the end instead.
    void stop();
    // Fills the memory as far as there are bytes, and returns how many there were.
    size_t read(void* to, size_t count);
    // The next bytes without taking them; fewer at the end.
    std::string_view peek(size_t count);
    bool atEnd() { return peek(1).empty(); }
    // Bytes at hand, none at the end; take() moves behind some of them.
    std::span<const uint8_t> available();
    void take(size_t count) { begin_ += count; }
    // Up to the end of the line, which is taken too; nothing if it is longer or has no end.
    std::optional<std::string> line(size_t longest);

  private:
    size_t fetch(void* to, size_t count);
    bool fetchMore();  // into the buffer; false at the end, or if it is full

    std::string name_;
    int file_, stop_ = -1;  // an event, where bytes may be waited for
    int64_t fileSize_ = -1;
    std::vector<uint8_t> buffer_;
    size_t begin_ = 0, end_ = 0;
};

// A plain file has what it had before until close(), where the system lets another one be written beside it.
class Sink {
  public:
    explicit Sink(const std::string& path);  // "-" is the standard output
    ~Sink();
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    void write(const void* from, size_t count);
    void write(std::string_view text) { write(text.data(), text.size()); }
    void close();  // throws where the system tells of an error only now

  private:
    int openFor(const std::string& path);
    void cut();

    std::string name_;
    std::optional<Replacement> replacement_;
    bool isUncut_ = false;  // a plain file that is written where it is, and has what it had before
    int file_;
};

}  // namespace tool
