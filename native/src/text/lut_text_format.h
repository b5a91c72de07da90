// What the writer and the reader of the TWLUT text share.
#pragma once

#include <cstddef>
#include <string_view>

namespace tw {

// Every form begins with these five characters; the sixth tells which form it is.
inline constexpr std::string_view kTextMark = "TWLUT";
inline constexpr std::size_t kFormLength = 6;

inline constexpr int kMaxCode = 65535;

inline constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

}  // namespace tw
