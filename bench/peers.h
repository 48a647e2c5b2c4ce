// Other libraries that do the tasks of the exports: the same layouts in and out, by methods of the same kind. Their results
// differ from ours and from each other in rounding and in the siting of chroma.
#pragma once

#include <string>
#include <vector>

#include "exports.h"

namespace bench {

struct Peer {
    std::string name;
    std::function<Call(const Image& source, const Image& destination)> bind;  // an empty call where the size is not served
    bool hasOtherScale = false;                                               // of its samples, so results can't be compared
};

// Each library that the build found, as "name version". The names of its ways begin with the same word, or, where there are two
// versions of a library, with both.
std::vector<std::string> peerVersions();

// All ways of all libraries to do a task.
std::vector<Peer> peersOf(const Task& task);

void addLibyuv(const Task& task, std::vector<Peer>& peers);
void addNewerLibyuv(const Task& task, std::vector<Peer>& peers);
void addYuvCrate(const Task& task, std::vector<Peer>& peers);
void addLibRaw(const Task& task, std::vector<Peer>& peers);
void addOpenCv(const Task& task, std::vector<Peer>& peers);
void addSwscale(const Task& task, std::vector<Peer>& peers);
void addZimg(const Task& task, std::vector<Peer>& peers);
void addPlainLoops(const Task& task, std::vector<Peer>& peers);

std::string libyuvVersion();
std::string newerLibyuvVersion();
std::string yuvCrateVersion();
std::string libRawVersion();
std::string openCvVersion();
std::string swscaleVersion();
std::string zimgVersion();

}  // namespace bench
