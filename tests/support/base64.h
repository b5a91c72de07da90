// Base64 as the TWLUT texts of the tests need it, bit by bit.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace twtest {

inline std::string encodeBase64(const std::vector<std::uint8_t>& bytes) {
    static const std::string letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    const std::size_t bits = bytes.size() * 8;
    for (std::size_t at = 0; at < bits; at += 6) {
        unsigned value = 0;
        for (std::size_t bit = at; bit < at + 6; ++bit) {
            const unsigned byte = bit < bits ? bytes[bit / 8] : 0U;
            value = value * 2 + ((byte >> (7 - bit % 8)) & 1U);
        }
        text += letters[value];
    }
    while (text.size() % 4 != 0)
        text += '=';
    return text;
}

inline std::string encodeCodes(const std::vector<std::uint16_t>& codes) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(codes.size() * 2);
    for (const std::uint16_t code : codes) {
        bytes.push_back(static_cast<std::uint8_t>(code % 256));
        bytes.push_back(static_cast<std::uint8_t>(code / 256));
    }
    return encodeBase64(bytes);
}

// Random codes.
inline std::vector<std::uint16_t> scatteredCodes(std::size_t count) {
    std::vector<std::uint16_t> codes(count);
    unsigned state = 12345;
    for (std::uint16_t& code : codes) {
        state = state * 1103515245U + 12345U;
        code = static_cast<std::uint16_t>(state >> 16);
    }
    return codes;
}

}  // namespace twtest
