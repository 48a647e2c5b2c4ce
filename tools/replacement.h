// A file that is written beside the one it stands for, and takes its place when it is whole.
#pragma once

#include <sys/stat.h>

#include <string>

namespace tool {

// Until it takes the place, an error or a signal leaves what stood there, and nothing beside it.
class Replacement {
  public:
    // For a path at which there is nothing yet, or a plain file.
    Replacement(const std::string& path, const struct stat* old);
    ~Replacement();
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    // Whoever writes it closes it. It is negative, with the reason in errno, where the path has to be written as it is: its
    // folder takes no files, the file has other names or another owner, or the path is that of an open file, as /dev/stdout.
    int file() const { return file_; }
    bool takePlace();  // false with the reason in errno

  private:
    std::string path_, beside_;
    int file_ = -1;
};

}  // namespace tool
