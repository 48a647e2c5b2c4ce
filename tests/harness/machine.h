// What the library under test learns of the machine and gets from it.
#pragma once

#include <cstdint>

namespace harness {

struct Machine {
    int32_t cacheBytes = 1 << 20;  // less than a frame, so that tests reach what is done beyond it; below 0 nobody knows
    bool hasMemory = true;
    int requestsGranted = INT32_MAX;  // before memory runs out

    int cacheQueries = 0;
    int requests = 0;  // for memory
    int32_t requestedBytes = 0;
    int blocksInUse = 0;
};
extern constinit Machine machine;

// The machine as it is at first, while a test changes it and counts.
class FreshMachine {
  public:
    FreshMachine() { machine = {}; }
    FreshMachine(const FreshMachine&) = delete;
    ~FreshMachine() { machine = {}; }
};

}  // namespace harness
