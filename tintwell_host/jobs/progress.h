// How far a sequence has come, on a terminal; nothing where nobody watches.
#pragma once

#include <chrono>
#include <cstddef>

namespace program {

class Progress {
public:
    explicit Progress(std::size_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // A bar, frames a second and the time left.
    void show(std::size_t done);
    // Takes the bar off the line, for a sentence.
    void clear() const;

private:
    using Clock = std::chrono::steady_clock;

    std::size_t total_;
    bool visible_;
    Clock::time_point start_ = Clock::now();
};

}  // namespace program
