// What the plug-in has logged.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

namespace twtest {

// The messages of effect.log in this home, without their timestamps.
inline std::vector<std::string> logLines(const TempHome& home) {
    constexpr std::size_t kStamp = sizeof "2000-01-01 00:00:00  " - 1;
    std::istringstream text(readFile(home.dataFile("effect.log")));
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);)
        lines.push_back(line.size() < kStamp ? line : line.substr(kStamp));
    return lines;
}

}  // namespace twtest
