// For programs that play the host: a process that can show dialogs. The module never needs it, as
// hosts are applications already.
#pragma once

namespace tw_mac {

// Makes this process an application with an event loop to come, the calling thread being its main
// thread. False when there is no screen to show anything on. Call it once, before the first dialog.
bool BecomeApplication();

}  // namespace tw_mac
