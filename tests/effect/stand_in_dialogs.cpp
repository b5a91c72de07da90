#include "tests/effect/stand_in_dialogs.h"

#include "native/src/export.h"
#include "platform/mac/dialogs.h"

extern "C" TW_EXPORT twtest::StandInDialogs* tintwell_stand_in_dialogs() {
    static twtest::StandInDialogs dialogs;
    return &dialogs;
}

namespace tw_mac {

std::string PickCube(const std::string& folder) {
    twtest::StandInDialogs& dialogs = *tintwell_stand_in_dialogs();
    dialogs.folders.push_back(folder);
    return dialogs.pick ? dialogs.pick() : std::string();
}

void Alert(const std::string& message, bool warning) {
    tintwell_stand_in_dialogs()->alerts.push_back({message, warning});
}

}  // namespace tw_mac
