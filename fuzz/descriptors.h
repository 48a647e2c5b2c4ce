// Files and pipes in memory, with names that open() takes.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace fuzz {

class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }

    int number() const { return number_; }
    std::string path() const { return "/proc/self/fd/" + std::to_string(number_); }
    void write(std::span<const uint8_t> bytes) const {
        if (::write(number_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) fail("write");
    }

    [[noreturn]] static void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

  private:
    int number_;
};

inline Descriptor memoryFile() {
    Descriptor file(memfd_create("fuzz", MFD_CLOEXEC));
    if (file.number() < 0) Descriptor::fail("memfd_create");
    return file;
}

inline Descriptor fileOf(std::span<const uint8_t> bytes) {
    Descriptor file = memoryFile();
    file.write(bytes);
    return file;
}

// What a pipe holds without a reader.
constexpr size_t pipeRoom = 1 << 16;

// A pipe that ends behind the bytes.
inline Descriptor pipeOf(std::span<const uint8_t> bytes) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) Descriptor::fail("pipe2");
    Descriptor out(ends[0]);
    Descriptor(ends[1]).write(bytes);
    return out;
}

inline std::vector<uint8_t> bytesOf(const Descriptor& file) {
    std::vector<uint8_t> bytes(static_cast<size_t>(lseek(file.number(), 0, SEEK_END)));
    if (pread(file.number(), bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) Descriptor::fail("pread");
    return bytes;
}

}  // namespace fuzz
