// What can go wrong, by the exit code that scripts see. Every message says what to do next.
#pragma once

#include <stdexcept>
#include <string>

namespace tool {

enum ExitCode { success = 0, failure = 1, usage = 2, noWay = 3, noFile = 4 };

struct Error : std::runtime_error {
    Error(ExitCode exitCode, const std::string& message) : std::runtime_error(message), code(exitCode) {}
    ExitCode code;
};

// The input breaks off or isn't what it claims to be, or a check found a difference.
struct DataError : Error {
    explicit DataError(const std::string& message) : Error(failure, message) {}
};
struct UsageError : Error {
    explicit UsageError(const std::string& message) : Error(usage, message) {}
};
// No functions lead from the one format to the other.
struct NoWayError : Error {
    explicit NoWayError(const std::string& message) : Error(noWay, message) {}
};
// The data are well formed, and of a kind that no function here takes.
struct UnsupportedError : Error {
    explicit UnsupportedError(const std::string& message) : Error(noWay, message) {}
};
// A file can't be opened, read or written.
struct FileError : Error {
    explicit FileError(const std::string& message) : Error(noFile, message) {}
};

}  // namespace tool
