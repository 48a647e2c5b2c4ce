// Threads that share the parts of a task.
#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace tool {

// None where the system has no more.
std::jthread startedThread(std::function<void()> work) noexcept;

class Workers {
  public:
    // The caller's thread is one of them. The others start when there is work, so that what else is needed is there before them;
    // where the system has fewer threads, these do all of it.
    explicit Workers(int threads);
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    int count() const { return count_; }
    // Calls task(part, worker) for all parts and returns when all are done. The first exception is thrown again.
    void run(int parts, const std::function<void(int part, int worker)>& task);

  private:
    void start();
    void work(int worker);
    void takeParts(int worker, std::unique_lock<std::mutex>& lock);

    std::mutex mutex_;
    std::condition_variable begin_, end_;
    const std::function<void(int, int)>* task_ = nullptr;
    int parts_ = 0, next_ = 0, unfinished_ = 0;
    bool isStarted_ = false, stops_ = false;
    std::exception_ptr failure_;
    int count_;
    std::vector<std::jthread> threads_;
};

}  // namespace tool
