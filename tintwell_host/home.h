// The simulated Mac home that the effect sees.
#pragma once

#include <string>

namespace program {

// Makes `chosen` (empty: "tintwell-host" in the user's state folder) the process's HOME, with the
// "Library/Application Support" that every Mac home has, so that the effect's log lands there. To
// be called before the module is loaded. Returns the folder. Throws Failure.
std::string enterHome(const std::string& chosen);

// The effect's log in the present home, whether or not it exists.
std::string logFile();

}  // namespace program
