// What the effect has logged.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/temp_folder.h"

namespace twtest {

using Lines = std::vector<std::string>;

// The date and time that a line starts with, and what stands before a message without them.
inline constexpr std::string_view kLogStamp = "dddd-dd-dd dd:dd:dd  ";
inline constexpr char kNoStamp[] = "no stamp: ";

// Whether the text starts with a date, a time and two blanks.
inline bool isStamped(std::string_view text) {
    if (text.size() < kLogStamp.size()) return false;
    for (std::size_t i = 0; i < kLogStamp.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (kLogStamp[i] == 'd' ? !isDigit : text[i] != kLogStamp[i]) return false;
    }
    return true;
}

// What follows them.
inline std::string messageOf(const std::string& text) {
    return isStamped(text) ? text.substr(kLogStamp.size()) : kNoStamp + text;
}

// The messages of a log file; none where there is no such file.
inline Lines readLog(const std::string& file) {
    Lines lines;
    std::istringstream text(readFile(file));
    for (std::string line; std::getline(text, line);)
        lines.push_back(messageOf(line));
    return lines;
}

// The messages of effect.log in this home.
inline Lines logLines(const TempHome& home) {
    return readLog(home.dataFile("effect.log"));
}

// The same without the lines of the LUT parameter's data callbacks.
inline Lines withoutDataCallbacks(Lines lines) {
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("Arb "); });
    return lines;
}

}  // namespace twtest
