// Ends the process when the effect differs from the reference.
#pragma once

#include <string>

namespace session_fuzz {

// What the session does now, for the message of a violation.
void nowRunning(const std::string& step);

// Prints the step and the sentence, removes the process's temporary home, and aborts.
[[noreturn]] void violation(const std::string& sentence);

inline void require(bool holds, const char* sentence) {
    if (!holds) violation(sentence);
}

}  // namespace session_fuzz
