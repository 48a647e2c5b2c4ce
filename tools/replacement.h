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

    // Whoever writes it closes it. Negative where the folder takes no file, with the reason in errno, and where the path stands
    // for an open file, as /dev/stdout does.
    int file() const { return file_; }
    // By its name, or by its bytes where the old file has other names, an owner who would change, or is mounted. False with the
    // reason in errno.
    bool takePlace();

  private:
    std::string path_, beside_;
    int file_ = -1;
    bool staysOld_ = false;
};

}  // namespace tool
