#include "workload.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace bench {

Workload::Workload(const Export& row, Size size) {
    const size_t sourceBytes = bytesOf(row.task.source, size), destinationBytes = bytesOf(row.task.destination, size);
    // A copy reads and writes half of all bytes each. It runs in the buffers of the conversions, of which one is then larger.
    const size_t copied = (sourceBytes + destinationBytes) / 2;
    bytes_ = double(sourceBytes + destinationBytes);
    sourceMemory_ = allocate(std::max(sourceBytes, copied));
    destinationMemory_ = allocate(std::max(destinationBytes, copied));
    source_ = placeImage(row.task.source, size, sourceMemory_.get());
    destination_ = placeImage(row.task.destination, size, destinationMemory_.get());
    paint(source_);

    contenders_.push_back({std::string(row.name), row.bind(source_, destination_)});
    contenders_.push_back({"copy", [from = sourceMemory_.get(), to = destinationMemory_.get(), copied] {
                               std::memcpy(to, from, copied);
                               return 0;
                           }});
    for (const Peer& peer : peersOf(row.task))
        if (Call call = peer.bind(source_, destination_)) contenders_.push_back({peer.name, call, peer.hasOtherScale});

    for (const Contender& contender : contenders_) {
        if (const int status = contender.call()) throw std::runtime_error(contender.name + " returns " + std::to_string(status));
    }
}

}  // namespace bench
