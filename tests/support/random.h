// Pseudo-random numbers that are the same on every platform and in every run.
#pragma once

#include <cstdint>

namespace twtest {

class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31);
    }

    // 0 .. count - 1
    int below(int count) { return static_cast<int>(next() % static_cast<std::uint64_t>(count)); }

    // low <= value <= high, in 2^24 steps
    float between(float low, float high) {
        const auto step = static_cast<double>(next() >> 40);
        const double range = static_cast<double>(high) - static_cast<double>(low);
        return static_cast<float>(static_cast<double>(low) + range * step / 16777215.0);
    }

private:
    std::uint64_t state_;
};

}  // namespace twtest
