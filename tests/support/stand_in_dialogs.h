// Stands in for the native dialogs in the module TintwellStandIn: the test gives the user's
// answers.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace twtest {

struct ShownAlert {
    std::string message;
    bool warning = false;

    bool operator==(const ShownAlert&) const = default;
};

// Threads: the test sets it up before it sends commands, and reads it when they are through. As on
// the main thread of an application, one dialog is open at a time.
struct StandInDialogs {
    // The user's answer to the open panel, called on the command's thread; no answer cancels it.
    std::function<std::string()> pick;
    std::function<void()> acknowledge;  // the same for an alert, once it is noted below
    std::vector<std::string> folders;   // that the panel was opened in
    std::vector<ShownAlert> alerts;
};

}  // namespace twtest

extern "C" twtest::StandInDialogs* tintwell_stand_in_dialogs();
