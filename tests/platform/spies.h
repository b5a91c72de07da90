// Watches AppKit's methods for what a window does not show; they then do their work as usual.
#pragma once

#include <string>
#include <vector>

namespace twtest {

struct AlertSeen {
    int runs = 0;
    int released = 0;  // objects gone
    long style = -1;
    std::string headline;
    std::string text;
    unsigned long buttons = 0;
};

struct PanelSeen {
    std::string message;
    bool restricted = false;  // whether file types were set
};

// Watches from now on; for the rest of the process.
void watchDialogs();
const AlertSeen& alertSeen();
const PanelSeen& panelSeen();

// From now on the system knows no file type.
void forgetFileTypes();

}  // namespace twtest
