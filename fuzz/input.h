// Takes the bytes of a fuzz input apart, front to back. What is asked for beyond the end is zeros,
// so that every input, however short, describes something.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace twfuzz {

// A view: the bytes must outlive it.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : at_(data), left_(size) {}

    bool empty() const { return left_ == 0; }
    std::size_t left() const { return left_; }

    // The next sizeof(Number) bytes as they stand in memory.
    template <typename Number>
    Number number() {
        Number value{};
        const std::size_t count = std::min(sizeof value, left_);
        if (count > 0) std::memcpy(&value, at_, count);
        skip(count);
        return value;
    }

    std::uint8_t byte() { return number<std::uint8_t>(); }
    bool flag() { return byte() % 2 != 0; }

    // 0 .. count - 1, from one byte where that is enough, else from four; count must not be 0.
    std::uint32_t below(std::uint32_t count) {
        return (count <= 256 ? byte() : number<std::uint32_t>()) % count;
    }

    // The next `most` bytes, or what is left of them.
    std::string bytes(std::size_t most) {
        const std::size_t count = std::min(most, left_);
        std::string taken(reinterpret_cast<const char*>(at_), count);
        skip(count);
        return taken;
    }
    std::string rest() { return bytes(left_); }

private:
    void skip(std::size_t count) {
        at_ += count;
        left_ -= count;
    }

    const std::uint8_t* at_;
    std::size_t left_;
};

}  // namespace twfuzz
