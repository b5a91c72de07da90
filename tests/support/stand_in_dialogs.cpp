#include "tests/support/stand_in_dialogs.h"

#include <mutex>

#include "native/src/export.h"
#include "native/src/never_destroyed.h"
#include "platform/mac/dialogs.h"

extern "C" TW_EXPORT twtest::StandInDialogs* tintwell_stand_in_dialogs() {
    static tw::NeverDestroyed<twtest::StandInDialogs> dialogs;
    return &*dialogs;
}

namespace {

// One dialog is open at a time.
std::mutex screen;

}  // namespace

namespace tw_mac {

std::string PickCube(const std::string& folder) {
    twtest::StandInDialogs& dialogs = *tintwell_stand_in_dialogs();
    const std::lock_guard open(screen);
    dialogs.folders.push_back(folder);
    return dialogs.pick ? dialogs.pick() : std::string();
}

void Alert(const std::string& message, bool warning) {
    twtest::StandInDialogs& dialogs = *tintwell_stand_in_dialogs();
    const std::lock_guard open(screen);
    dialogs.alerts.push_back({message, warning});
    if (dialogs.acknowledge) dialogs.acknowledge();
}

}  // namespace tw_mac
