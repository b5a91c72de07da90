// Stands in for the Objective-C runtime, AppKit and the main queue, as far as the plug-in's dialogs
// go: the messages that the bundle's code sends are understood and written down, and a test plays
// the user.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace macho {

// Threads: a test sets it up before it sends commands; commands that open dialogs come one at a
// time.
struct AppKit {
    // The user's answer to an open panel that was opened in `folder` (empty: none was asked for):
    // the chosen path, or nothing to cancel. Not set: cancels.
    std::function<std::string(const std::string& folder)> pick;
    bool chosenHasPath = true;  // in a file system, which the chosen URL may lack
    // Told of every alert that is shown.
    std::function<void(const std::string& message, bool warning)> alert;

    // Every message, as it would stand in the source: [NSAlert setMessageText:"Tintwell"]. A
    // hand-over to the main thread is "dispatch_sync".
    std::vector<std::string> messages;
    int openPools = 0;    // autorelease pools
    int liveObjects = 0;  // that somebody has to release
};

// The one of this process.
AppKit& appKit();

// The address of an import of these libraries; null for other names.
void* resolveAppKit(std::string_view linkerName);

}  // namespace macho
