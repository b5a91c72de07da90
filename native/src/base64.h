// The alphabet of base64 (RFC 4648), of which TWLUT texts are made.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tw {

inline constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// By character: its six bits, -1 for all that are not of the alphabet.
inline constexpr std::array<std::int8_t, 256> kSextets = [] {
    std::array<std::int8_t, 256> sextets{};
    sextets.fill(-1);
    for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i)
        sextets[static_cast<unsigned char>(kBase64Alphabet[i])] = static_cast<std::int8_t>(i);
    return sextets;
}();

inline int sextetOf(char character) {
    return kSextets[static_cast<unsigned char>(character)];
}

}  // namespace tw
