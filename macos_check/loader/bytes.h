// Reading numbers out of a mapped file.
#pragma once

#include <cstdint>
#include <cstring>

namespace macho {

using Byte = std::uint8_t;
using Word = std::uint32_t;
using Address = std::uint64_t;

// The value at an address that need not be aligned.
template <class Value>
Value load(const void* at) {
    Value value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

// Numbers in groups of 7 bits, lowest first. Both leave `at` behind the number.
inline Address loadUleb(const Byte*& at) {
    Address value = 0;
    for (int shift = 0;; shift += 7) {
        const Byte byte = *at++;
        value |= Address{byte & 0x7Fu} << shift;
        if (byte < 0x80) return value;
    }
}

inline std::int64_t loadSleb(const Byte*& at) {
    Address value = 0;
    for (int shift = 0;;) {
        const Byte byte = *at++;
        value |= Address{byte & 0x7Fu} << shift;
        shift += 7;
        if (byte >= 0x80) continue;
        if (shift < 64 && (byte & 0x40u)) value |= ~Address{0} << shift;
        return static_cast<std::int64_t>(value);
    }
}

}  // namespace macho
