#include "tools/workers.h"

namespace tool {

Workers::Workers(int threads) {
    for (int i = 1; i < threads; ++i) threads_.emplace_back([this, i] { work(i); });
}

Workers::~Workers() {
    {
        const std::lock_guard lock(mutex_);
        stops_ = true;
    }
    begin_.notify_all();
    for (std::thread& t : threads_) t.join();
}

void Workers::run(int parts, const std::function<void(int, int)>& task) {
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
