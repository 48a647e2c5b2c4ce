#include "workload.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "library.h"

namespace bench {

namespace {

// Whole lines; the rest of the last one stays away.
void copyStreamed(uint8_t* to, const uint8_t* from, size_t bytes) {
    constexpr size_t line = 64, vector = sizeof(__m128i);
    for (size_t i = 0; i + line <= bytes; i += line)
        for (size_t k = i; k < i + line; k += vector)
            _mm_stream_si128(reinterpret_cast<__m128i*>(to + k), _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + k)));
    _mm_sfence();
}

}  // namespace

Workload::Workload(const Export& row, Size size, const std::vector<std::string>& others) {
    const size_t sourceBytes = bytesOf(row.task.source, size), destinationBytes = bytesOf(row.task.destination, size);
    // A copy reads and writes half of all bytes each. It runs in the buffers of the conversions, of which one is then larger.
    const size_t copied = (sourceBytes + destinationBytes) / 2;
    bytes_ = double(sourceBytes + destinationBytes);
    sourceMemory_ = allocate(std::max(sourceBytes, copied));
    destinationMemory_ = allocate(std::max(destinationBytes, copied));
    source_ = placeImage(row.task.source, size, sourceMemory_.get());
    destination_ = placeImage(row.task.destination, size, destinationMemory_.get());
    paint(source_);

    const auto copyBy = [from = sourceMemory_.get(), to = destinationMemory_.get(), copied](auto copy) {
        return [=] {
            copy(to, from, copied);
            return 0;
        };
    };
    contenders_.push_back({std::string(row.name), Role::self, row.bind(source_, destination_)});
    contenders_.push_back({"copy", Role::copy, copyBy(std::memcpy)});
    contenders_.push_back({"streamed copy", Role::streamedCopy, copyBy(copyStreamed)});
    for (const std::string& other : others) {
        bindTo(other);
        contenders_.push_back({other, Role::other, row.bind(source_, destination_)});
        bindTo({});
    }
    for (const Peer& peer : peersOf(row.task))
        if (Call call = peer.bind(source_, destination_))
            contenders_.push_back({peer.name, Role::peer, call, peer.hasOtherScale});

    for (const Contender& contender : contenders_) {
        if (const int status = contender.call()) throw std::runtime_error(contender.name + " returns " + std::to_string(status));
    }
}

}  // namespace bench
