#include "tools/bytes.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "tools/errors.h"

namespace tool {

namespace {

constexpr size_t bufferSize = 1 << 16;
constexpr int pipeSize = 1 << 20;  // what users without privileges may ask for

[[noreturn]] void fail(const std::string& what, const std::string& name) {
    throw FileError("cannot " + what + ' ' + name + ": " + std::strerror(errno));
}

bool isStandard(const std::string& path) { return path == "-"; }

// Fewer changes between this program and the one at the other end; nothing happens to what is no pipe.
void widen(int file) { fcntl(file, F_SETPIPE_SZ, pipeSize); }

}  // namespace

Source::Source(const std::string& path)
    : name_(isStandard(path) ? "the standard input" : path),
      file_(isStandard(path) ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)),
      buffer_(bufferSize) {
    if (file_ < 0) fail("open", name_);
    struct stat status {};
    if (fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) fileSize_ = status.st_size;
    if (fileSize_ < 0) stop_ = eventfd(0, EFD_CLOEXEC);
    widen(file_);
}

Source::~Source() {
    if (file_ != STDIN_FILENO) ::close(file_);
    if (stop_ >= 0) ::close(stop_);
}

bool Source::isAt(const std::string& sinkPath) const {
    struct stat in {
    }, out{};
    const int found = isStandard(sinkPath) ? fstat(STDOUT_FILENO, &out) : stat(sinkPath.c_str(), &out);
    return found == 0 && fstat(file_, &in) == 0 && (S_ISREG(in.st_mode) || S_ISBLK(in.st_mode)) && in.st_dev == out.st_dev &&
           in.st_ino == out.st_ino;
}

void Source::stop() { eventfd_write(stop_, 1); }

size_t Source::fetch(void* to, size_t count) {
    while (true) {
        if (stop_ >= 0) {
            pollfd ready[] = {{stop_, POLLIN, 0}, {file_, POLLIN, 0}};
            if (poll(ready, 2, -1) > 0 && ready[0].revents) return 0;
        }
        const ssize_t got = ::read(file_, to, count);
        if (got >= 0) return static_cast<size_t>(got);
        if (errno != EINTR) fail("read", name_);
    }
}

size_t Source::read(void* to, size_t count) {
    auto* at = static_cast<uint8_t*>(to);
    const size_t buffered = std::min(count, end_ - begin_);
    std::memcpy(at, buffer_.data() + begin_, buffered);
    begin_ += buffered;
    size_t done = buffered;
    while (done < count) {
        const size_t got = fetch(at + done, count - done);
        if (got == 0) break;
        done += got;
    }
    return done;
}

bool Source::fetchMore() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    const size_t got = fetch(buffer_.data() + end_, buffer_.size() - end_);
    end_ += got;
    return got > 0;
}

std::string_view Source::peek(size_t count) {
    while (end_ - begin_ < count && fetchMore()) {
    }
    return {reinterpret_cast<const char*>(buffer_.data() + begin_), std::min(count, end_ - begin_)};
}

std::span<const uint8_t> Source::available() {
    peek(1);
    return {buffer_.data() + begin_, end_ - begin_};
}

std::optional<std::string> Source::line(size_t longest) {
    // No more is waited for than the line has: who writes it may wait for an answer.
    for (size_t searched = 0; searched < longest; searched = end_ - begin_) {
        const std::string_view next = peek(searched + 1);
        if (next.size() <= searched) return std::nullopt;
        const std::string_view all(next.data(), end_ - begin_);
        if (const size_t end = all.find('\n', searched); end != std::string_view::npos) {
            std::string text(all.substr(0, end));
            take(end + 1);
            return text;
        }
    }
    return std::nullopt;
}

Sink::Sink(const std::string& path)
    : name_(isStandard(path) ? "the standard output" : path), file_(isStandard(path) ? STDOUT_FILENO : openFor(path)) {
    widen(file_);
}

Sink::~Sink() {
    if (file_ >= 0 && file_ != STDOUT_FILENO) ::close(file_);
}

int Sink::openFor(const std::string& path) {
    const int there = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (there < 0 && errno != ENOENT) fail("write", name_);
    struct stat old {};
    if (there >= 0 && (fstat(there, &old) != 0 || !S_ISREG(old.st_mode))) return there;
    replacement_.emplace(path, there >= 0 ? &old : nullptr);
    if (replacement_->file() >= 0) {
        if (there >= 0) ::close(there);
        return replacement_->file();
    }
    if (there < 0) fail("write", name_);
    replacement_.reset();
    isUncut_ = true;
    return there;
}

void Sink::cut() {
    if (std::exchange(isUncut_, false) && ftruncate(file_, 0) != 0) fail("write", name_);
}

void Sink::write(const void* from, size_t count) {
    cut();
    auto* at = static_cast<const uint8_t*>(from);
    while (count) {
        const ssize_t done = ::write(file_, at, count);
        if (done < 0 && errno == EINTR) continue;
        if (done < 0) fail("write", name_);
        at += done;
        count -= static_cast<size_t>(done);
    }
}

void Sink::close() {
    cut();
    const int file = std::exchange(file_, -1);
    if (file >= 0 && file != STDOUT_FILENO && ::close(file) != 0) fail("write", name_);
    if (replacement_ && !replacement_->takePlace()) fail("write", name_);
}

}  // namespace tool
