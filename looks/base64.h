// The alphabet of base64.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace looks {

// Six bits for each character of the alphabet, -1 for all others.
inline constexpr std::array<std::int8_t, 256> kSextets = [] {
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::int8_t, 256> sextets{};
    sextets.fill(-1);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i)
        sextets[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::int8_t>(i);
    return sextets;
}();

inline int sextetOf(char character) {
    return kSextets[static_cast<unsigned char>(character)];
}

// Blanks and line ends.
inline bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

}  // namespace looks
