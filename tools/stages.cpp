#include "tools/stages.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tool {

namespace {

constexpr int slotCount = 3;  // one for each thread

// Numbers of slots that wait for the next thread. What is in a closed queue still comes out.
class Queue {
  public:
    void push(int slot) {
        const std::lock_guard lock(mutex_);
        slots_[static_cast<size_t>(count_++)] = slot;
        changed_.notify_all();
    }

    std::optional<int> pop() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return isClosed_ || count_ > 0; });
        if (count_ == 0) return std::nullopt;
        const int slot = slots_[0];
        std::shift_left(slots_.begin(), slots_.end(), 1);
        --count_;
        return slot;
    }

    void close() {
        const std::lock_guard lock(mutex_);
        isClosed_ = true;
        changed_.notify_all();
    }

    void closeAndClear() {
        const std::lock_guard lock(mutex_);
        count_ = 0;
        isClosed_ = true;
        changed_.notify_all();
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::array<int, slotCount> slots_{};
    int count_ = 0;
    bool isClosed_ = false;
};

struct Slot {
    Buffer source, target;
};

class Stages {
  public:
    Stages(Reader& reader, Converter& converter, Writer& writer, int64_t most, Progress& progress)
        : reader_(reader), converter_(converter), writer_(writer), most_(most), progress_(progress) {
        for (Slot& slot : slots_) slot = {Buffer(converter.sourceBytes()), Buffer(converter.targetBytes())};
    }

    void run() {
        for (int i = 0; i < slotCount; ++i) free_.push(i);
        std::jthread writing = startedThread([this] { writeAll(); });
        const std::jthread reading = writing.joinable() ? startedThread([this] { readAll(); }) : std::jthread();
        if (reading.joinable()) return convertAll();
        converted_.close();
        writing = {};
        takeTurns();
    }

    void finish(Output& output) const {
        const bool isWhole = !reading_ && !converting_ && !writing_;
        if (isWhole || (!writing_ && written_ > 0)) output.close();
        for (const std::exception_ptr& failure : {writing_, converting_, reading_})
            if (failure) std::rethrow_exception(failure);
    }

  private:
    void readAll() {
        for (int64_t i = 0; i != most_; ++i) {
            const auto slot = free_.pop();
            if (!slot || !read(at(*slot))) break;
            read_.push(*slot);
        }
        read_.close();
    }

    void convertAll() {
        while (const auto slot = read_.pop()) {
            if (!convert(at(*slot))) {
                stopReading();
                break;
            }
            converted_.push(*slot);
        }
        converted_.close();
    }

    void writeAll() {
        while (const auto slot = converted_.pop()) {
            if (!write(at(*slot))) {
                stopReading();
                read_.closeAndClear();
                return;
            }
            free_.push(*slot);
        }
    }

    // The same on one thread, where the system has no others.
    void takeTurns() {
        Slot& slot = slots_[0];
        for (int64_t i = 0; i != most_; ++i)
            if (!read(slot) || !convert(slot) || !write(slot)) return;
    }

    // A frame that the input may never send isn't waited for.
    void stopReading() {
        free_.closeAndClear();
        reader_.stop();
    }

    bool read(Slot& slot) {
        return guarded(reading_, [&] { return reader_.next(slot.source.data()); });
    }

    bool convert(Slot& slot) {
        return guarded(converting_, [&] {
            converter_.convert(slot.source.data(), slot.target.data());
            return true;
        });
    }

    bool write(Slot& slot) {
        return guarded(writing_, [&] {
            writer_.write(slot.target.data());
            progress_.advance();
            ++written_;
            return true;
        });
    }

    Slot& at(int slot) { return slots_[static_cast<size_t>(slot)]; }

    template <typename Work>
    static bool guarded(std::exception_ptr& failure, Work work) {
        try {
            return work();
        } catch (...) {
            failure = std::current_exception();
            return false;
        }
    }

    Reader& reader_;
    Converter& converter_;
    Writer& writer_;
    int64_t most_;
    Progress& progress_;
    std::array<Slot, slotCount> slots_;
    Queue free_, read_, converted_;
    std::exception_ptr reading_, converting_, writing_;
    int64_t written_ = 0;
};

}  // namespace

void convertAll(Reader& reader, Converter& converter, Output& output, int64_t most, Progress& progress) {
    Stages stages(reader, converter, output.writer(), most, progress);
    stages.run();
    stages.finish(output);
}

}  // namespace tool
