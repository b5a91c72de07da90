// What dialogs.mm asks of AppKit, and the user's answers.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace twtest {

// Threads: the main one alone.
struct Recorder {
    // Each message with its argument: "setTitle: Tintwell", "runModal", "alloc", "dealloc".
    std::vector<std::string> messages;

    bool choosesOk = true;                      // in the open panel; false: cancels
    bool knowsTypes = true;                     // of files
    std::optional<std::string> path = "/cube";  // of the file that is chosen; none: it has no path
};

Recorder& recorder();

}  // namespace twtest
