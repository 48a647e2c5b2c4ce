// An export at one image size, with everything that it is measured against, on the same buffers.
#pragma once

#include "peers.h"

namespace bench {

struct Contender {
    std::string name;
    Call call;
    bool hasOtherScale = false;
};

class Workload {
  public:
    // Calls every contender once. Throws when one reports an error.
    Workload(const Export& row, Size size);
    Workload(const Workload&) = delete;

    // The export comes first, the plain copy of as many bytes second, then the peers.
    const std::vector<Contender>& contenders() const { return contenders_; }
    static constexpr size_t exportIndex = 0, copyIndex = 1, firstPeer = 2;

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
