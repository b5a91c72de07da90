// A bound for the memory of the frames in flight.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace program {

// Threads: any.
class MemoryBudget {
public:
    explicit MemoryBudget(std::int64_t bytes) : free_(bytes), total_(bytes) {}

    // A frame's share, waited for and given back by scope. One frame alone gets what it needs.
    class Share {
    public:
        Share(MemoryBudget& budget, std::int64_t bytes);
        ~Share();
        Share(const Share&) = delete;
        Share& operator=(const Share&) = delete;

    private:
        MemoryBudget& budget_;
        std::int64_t bytes_;
    };

private:
    std::mutex mutex_;
    std::condition_variable given_;
    std::int64_t free_;
    std::int64_t total_;
};

}  // namespace program
