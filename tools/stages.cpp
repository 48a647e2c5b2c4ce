#include "tools/stages.h"

#include <deque>
#include <optional>

namespace tool {

namespace {

constexpr int slotCount = 3;  // one for each thread

// Numbers of slots that wait for the next thread. What is in a closed queue still comes out.
class Queue {
  public:
    void push(int slot) {
        const std::lock_guard lock(mutex_);
        slots_.push_back(slot);
        changed_.notify_all();
    }

    std::optional<int> pop() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return isClosed_ || !slots_.empty(); });
        if (slots_.empty()) return std::nullopt;
        const int slot = slots_.front();
        slots_.pop_front();
        return slot;
    }

    void close() {
        const std::lock_guard lock(mutex_);
        isClosed_ = true;
        changed_.notify_all();
    }

    void closeAndClear() {
        const std::lock_guard lock(mutex_);
        slots_.clear();
        isClosed_ = true;
        changed_.notify_all();
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<int> slots_;
    bool isClosed_ = false;
};

struct Slot {
    Buffer source, target;
};

class Stages {
  public:
    explicit Stages(const Converter& converter) {
        for (int i = 0; i < slotCount; ++i) {
            slots_.push_back({Buffer(converter.sourceBytes()), Buffer(converter.targetBytes())});
            free_.push(i);
        }
    }

    void read(Reader& reader, int64_t most) {
        guarded(reading_, [&] {
            for (int64_t i = 0; i != most; ++i) {
                const auto slot = free_.pop();
                if (!slot || !reader.next(at(*slot).source.data())) return;
                read_.push(*slot);
            }
        });
        read_.close();
    }

    void convert(Converter& converter) {
        guarded(converting_, [&] {
            while (const auto slot = read_.pop()) {
                converter.convert(at(*slot).source.data(), at(*slot).target.data());
                converted_.push(*slot);
            }
        });
        converted_.close();
        if (converting_) free_.closeAndClear();
    }

    void write(Writer& writer, Progress& progress) {
        guarded(writing_, [&] {
            while (const auto slot = converted_.pop()) {
                writer.write(at(*slot).target.data());
                progress.advance();
                ++written_;
                free_.push(*slot);
            }
        });
        if (!writing_) return;
        free_.closeAndClear();
        read_.closeAndClear();
    }

    int64_t finish() const {
        for (const std::exception_ptr& failure : {writing_, converting_, reading_})
            if (failure) std::rethrow_exception(failure);
        return written_;
    }

  private:
    Slot& at(int slot) { return slots_[static_cast<size_t>(slot)]; }

    template <typename Work>
    static void guarded(std::exception_ptr& failure, Work work) {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
    }

    std::vector<Slot> slots_;
    Queue free_, read_, converted_;
    std::exception_ptr reading_, converting_, writing_;
    int64_t written_ = 0;
};

}  // namespace

int64_t convertAll(Reader& reader, Converter& converter, Writer& writer, int64_t most, Progress& progress) {
    Stages stages(converter);
    std::thread reading([&] { stages.read(reader, most); });
    std::thread writing([&] { stages.write(writer, progress); });
    stages.convert(converter);
    reading.join();
    writing.join();
    return stages.finish();
}

}  // namespace tool
