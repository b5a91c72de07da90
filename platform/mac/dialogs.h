// The plug-in's two native dialogs, as plain functions on UTF-8 strings: no platform type leaves
// this layer.
//
// Threads: any. Both run on the process's main thread, by a synchronous hand-over when the caller
// is on another one, and block the caller until the user has closed the dialog. A caller on another
// thread needs a main thread that runs its event loop, and must hold no lock that it could wait
// for.
#pragma once

#include <string>

namespace tw_mac {

// Lets the user pick one .cube file. The dialog opens in `folder` (UTF-8), or where the system
// decides when that is empty, is not UTF-8 or does not exist. Returns the file's path as the file
// system spells it, or an empty string when the user cancels or the choice has no path. Throws only
// std::bad_alloc, on the caller's thread.
std::string PickCube(const std::string& folder);

// Shows `message` (UTF-8; shown empty when it is not) under the headline "Tintwell" with one
// button, in the warning style or the informational one.
void Alert(const std::string& message, bool warning);

}  // namespace tw_mac
