// The date and time that log lines start with.
#pragma once

#include <string>
#include <string_view>

namespace twtest {

inline constexpr std::string_view kLogStamp = "dddd-dd-dd dd:dd:dd  ";

// Whether the text starts with a date, a time and two blanks.
inline bool isStamped(std::string_view text) {
    if (text.size() < kLogStamp.size()) return false;
    for (std::size_t i = 0; i < kLogStamp.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (kLogStamp[i] == 'd' ? !isDigit : text[i] != kLogStamp[i]) return false;
    }
    return true;
}

// What follows them; says so when the text does not start with them.
inline std::string messageOf(const std::string& text) {
    return isStamped(text) ? text.substr(kLogStamp.size()) : "no stamp: " + text;
}

}  // namespace twtest
