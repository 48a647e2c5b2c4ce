#include "tools/workers.h"

namespace tool {

std::jthread startedThread(std::function<void()> work) noexcept {
    try {
        return std::jthread(std::move(work));
    } catch (const std::exception&) {
        return {};
    }
}

Workers::Workers(int threads) : count_(threads) { threads_.reserve(static_cast<size_t>(threads)); }

Workers::~Workers() {
    {
        const std::lock_guard lock(mutex_);
        stops_ = true;
    }
    begin_.notify_all();
}

void Workers::start() {
    isStarted_ = true;
    for (int i = 1; i < count_; ++i) {
        std::jthread thread = startedThread([this, i] { work(i); });
        if (!thread.joinable()) return;
        threads_.push_back(std::move(thread));
    }
}

void Workers::run(int parts, const std::function<void(int, int)>& task) {
    if (!isStarted_) start();
    std::unique_lock lock(mutex_);
    task_ = &task;
    parts_ = unfinished_ = parts;
    next_ = 0;
    failure_ = nullptr;
    if (parts > 1) begin_.notify_all();
    takeParts(0, lock);
    end_.wait(lock, [this] { return unfinished_ == 0; });
    task_ = nullptr;
    if (failure_) std::rethrow_exception(failure_);
}

void Workers::work(int worker) {
    std::unique_lock lock(mutex_);
    while (true) {
        begin_.wait(lock, [this] { return stops_ || next_ < parts_; });
        if (stops_) return;
        takeParts(worker, lock);
    }
}

void Workers::takeParts(int worker, std::unique_lock<std::mutex>& lock) {
    while (next_ < parts_) {
        const int part = next_++;
        lock.unlock();
        std::exception_ptr failure;
        try {
            (*task_)(part, worker);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        if (failure && !failure_) failure_ = failure;
        if (--unfinished_ == 0) end_.notify_all();
    }
}

}  // namespace tool
