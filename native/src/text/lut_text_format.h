// What the writer and the reader of the TWLUT text share.
#pragma once

#include <cstddef>
#include <string_view>

namespace tw {

// Every form begins with these five characters; the sixth tells which form it is.
inline constexpr std::string_view kTextMark = "TWLUT";
inline constexpr std::size_t kFormLength = 6;

inline constexpr int kMaxCode = 65535;

}  // namespace tw
