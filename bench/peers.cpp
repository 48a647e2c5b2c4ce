#include "peers.h"

namespace bench {

namespace {

struct Library {
    std::string (*version)();
    void (*add)(const Task&, std::vector<Peer>&);
};

// The entries of the libraries that are missing stay out by the preprocessor. The last one closes the list.
constexpr Library libraries[] = {
#ifdef ZELCC_BENCH_LIBYUV
    {libyuvVersion, addLibyuv},
#endif
#ifdef ZELCC_BENCH_NEWER_LIBYUV
    {newerLibyuvVersion, addNewerLibyuv},
#endif
#ifdef ZELCC_BENCH_YUV_CRATE
    {yuvCrateVersion, addYuvCrate},
#endif
#ifdef ZELCC_BENCH_LIBRAW
    {libRawVersion, addLibRaw},
#endif
#ifdef ZELCC_BENCH_OPENCV
    {openCvVersion, addOpenCv},
#endif
#ifdef ZELCC_BENCH_SWSCALE
    {swscaleVersion, addSwscale},
#endif
#ifdef ZELCC_BENCH_ZIMG
    {zimgVersion, addZimg},
#endif
    {nullptr, nullptr},
};

}  // namespace

std::vector<std::string> peerVersions() {
    std::vector<std::string> versions;
    for (const Library* library = libraries; library->version; ++library) versions.push_back(library->version());
    return versions;
}

std::vector<Peer> peersOf(const Task& task) {
    std::vector<Peer> peers;
    for (const Library* library = libraries; library->add; ++library) library->add(task, peers);
    addPlainLoops(task, peers);
    return peers;
}

}  // namespace bench
