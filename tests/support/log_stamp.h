// The date and time that log lines start with.
#pragma once

#include <cctype>
#include <string>

namespace twtest {

// What follows the date, the time and two blanks; says so when the text does not start with them.
inline std::string messageOf(const std::string& text) {
    const std::string pattern = "dddd-dd-dd dd:dd:dd  ";
    bool stamped = text.size() >= pattern.size();
    for (std::size_t i = 0; stamped && i < pattern.size(); ++i) {
        const bool digit = std::isdigit(static_cast<unsigned char>(text[i])) != 0;
        stamped = pattern[i] == 'd' ? digit : text[i] == pattern[i];
    }
    return stamped ? text.substr(pattern.size()) : "no stamp: " + text;
}

}  // namespace twtest
