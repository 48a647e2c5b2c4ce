#include "tools/replacement.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>

namespace tool {

namespace {

namespace fs = std::filesystem;

// What a signal removes. One file at a time is on its way.
char unfinished[PATH_MAX];
std::atomic<bool> isUnfinished;
static_assert(std::atomic<bool>::is_always_lock_free);

void removeAndEnd(int signal) {
    if (isUnfinished) unlink(unfinished);
    raise(signal);  // which is the system's again
}

// Signals that the caller has made ignored stay so.
void watchSignals() {
    struct sigaction usual {
    }, removing{};
    removing.sa_handler = removeAndEnd;
    removing.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ})
        if (sigaction(signal, nullptr, &usual) == 0 && usual.sa_handler == SIG_DFL) sigaction(signal, &removing, nullptr);
}

// Where links lead to, of which the last may lead to nothing yet. The links below /proc are open files, whatever their names.
std::optional<fs::path> behindLinks(fs::path path) {
    constexpr int mostLinks = 40;  // as the system has it
    std::error_code error;
    for (int i = 0; i < mostLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
        const fs::path folder = path.parent_path();
        if (fs::canonical(folder.empty() ? "." : folder, error).native().starts_with("/proc/")) return std::nullopt;
        path = folder / fs::read_symlink(path, error);
    }
    return path;
}

// For a file that has to stay the same one.
bool copy(const std::string& from, const std::string& to) {
    const int source = open(from.c_str(), O_RDONLY | O_CLOEXEC), target = open(to.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (target < 0) return false;
    constexpr size_t most = 1 << 30;
    ssize_t copied;
    do copied = sendfile(target, source, nullptr, most);
    while (copied > 0 || (copied < 0 && errno == EINTR));
    const bool isClosed = close(target) == 0;
    close(source);
    return copied == 0 && isClosed;
}

}  // namespace

Replacement::Replacement(const std::string& path, const struct stat* old) {
    const auto place = behindLinks(path);
    if (!place) return;
    path_ = *place;
    const fs::path folder = place->has_parent_path() ? place->parent_path() : ".";
    static std::atomic<int> count = 0;
    do {
        beside_ = folder / (".zelcc-" + std::to_string(getpid()) + '-' + std::to_string(count++));
        file_ = open(beside_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, old ? old->st_mode & 0666 : 0666);
    } while (file_ < 0 && errno == EEXIST);
    if (file_ < 0) {
        beside_.clear();
        return;
    }
    [[maybe_unused]] static const bool isWatched = (watchSignals(), true);
    std::strcpy(unfinished, beside_.c_str());  // the system has opened it, so it is no longer
    isUnfinished = true;
    if (!old) return;
    const bool isLike = fchown(file_, old->st_uid, old->st_gid) == 0 && fchmod(file_, old->st_mode & 0777) == 0;
    staysOld_ = old->st_nlink > 1 || !isLike;
}

Replacement::~Replacement() {
    if (!beside_.empty()) unlink(beside_.c_str());
    isUnfinished = false;
}

bool Replacement::takePlace() {
    if (!staysOld_ && rename(beside_.c_str(), path_.c_str()) == 0) {
        beside_.clear();
        isUnfinished = false;
        return true;
    }
    const bool hasToStay = staysOld_ || errno == EBUSY;  // as a file does that is mounted
    return hasToStay && copy(beside_, path_);
}

}  // namespace tool
