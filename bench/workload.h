// An export at one image size, with everything that it is measured against, on the same buffers.
#pragma once

#include "peers.h"

namespace bench {

enum class Role {
    self,
    copy,          // of as many bytes, by memcpy
    streamedCopy,  // the same with stores that bypass the caches
    other,         // the export of another build of the library
    peer,
};

struct Contender {
    std::string name;
    Role role;
    Call call;
    bool hasOtherScale = false;
};

class Workload {
  public:
    // Calls every contender once. Throws when one reports an error. `others` are files of libraries.
    Workload(const Export& row, Size size, const std::vector<std::string>& others = {});
    Workload(const Workload&) = delete;

    // The export comes first and the copies next.
    const std::vector<Contender>& contenders() const { return contenders_; }
    static constexpr size_t exportIndex = 0, copyIndex = 1, streamedCopyIndex = 2, firstPeer = 3;  // without other libraries

    // Bytes that one call reads and writes, the same for all contenders.
    double bytes() const { return bytes_; }

    // The destination, with the result of the contender that ran last.
    const Image& result() const { return destination_; }

  private:
    double bytes_;
    Memory sourceMemory_, destinationMemory_;
    Image source_, destination_;
    std::vector<Contender> contenders_;
};

}  // namespace bench
