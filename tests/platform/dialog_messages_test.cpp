// The messages that dialogs.mm sends to AppKit, recorded by one without windows.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "platform/mac/dialogs.h"
#include "tests/platform/recorder/recorder.h"

namespace {

using twtest::recorder;
using Messages = std::vector<std::string>;

class DialogMessages : public testing::Test {
protected:
    // Those that begin so.
    static Messages only(const std::string& selector) {
        Messages found;
        for (const std::string& message : recorder().messages)
            if (message.starts_with(selector)) found.push_back(message);
        return found;
    }
};

TEST_F(DialogMessages, ofTheOpenPanel_onAFolder) {
    EXPECT_EQ(tw_mac::PickCube("/looks/\xC3\xA9t\xC3\xA9"), "/cube");
    EXPECT_EQ(recorder().messages,
              (Messages{"openPanel", "setTitle: Tintwell: choose a LUT",
                        "setMessage: Choose a .cube LUT to store in this Tintwell effect.",
                        "setCanChooseFiles: YES", "setCanChooseDirectories: NO",
                        "setAllowsMultipleSelection: NO", "setAllowedContentTypes: cube",
                        "setDirectoryURL: /looks/\xC3\xA9t\xC3\xA9", "runModal"}));
}

TEST_F(DialogMessages, setNoFolder_whereThereIsNone) {
    EXPECT_EQ(tw_mac::PickCube(""), "/cube");
    EXPECT_EQ(only("setDirectoryURL:"), Messages());
    EXPECT_EQ(only("runModal"), Messages{"runModal"});
}

TEST_F(DialogMessages, setNoFolder_thatIsNotUtf8) {
    EXPECT_EQ(tw_mac::PickCube("/\xFF\xFE"), "/cube");
    EXPECT_EQ(only("setDirectoryURL:"), Messages());
    EXPECT_EQ(only("runModal"), Messages{"runModal"});
}

TEST_F(DialogMessages, restrictNothing_whereTheTypeIsUnknown) {
    recorder().knowsTypes = false;
    EXPECT_EQ(tw_mac::PickCube("/looks"), "/cube");
    EXPECT_EQ(only("setAllowedContentTypes:"), Messages());
}

TEST_F(DialogMessages, giveNoPath_whenTheUserCancels) {
    recorder().choosesOk = false;
    EXPECT_EQ(tw_mac::PickCube("/looks"), "");
}

TEST_F(DialogMessages, giveNoPath_whenTheChosenFileHasNone) {
    recorder().path.reset();
    EXPECT_EQ(tw_mac::PickCube("/looks"), "");
    EXPECT_EQ(only("runModal"), Messages{"runModal"});
}

TEST_F(DialogMessages, ofAnAlert) {
    tw_mac::Alert("two\nlines", true);
    EXPECT_EQ(
        recorder().messages,
        (Messages{"alloc", "setMessageText: Tintwell", "setInformativeText: two\nlines",
                  "setAlertStyle: warning", "addButtonWithTitle: OK", "runModal", "dealloc"}));
}

TEST_F(DialogMessages, ofAnAlertThatInforms_withWordsThatAreNotUtf8) {
    tw_mac::Alert("\xFF\xFE", false);
    EXPECT_EQ(only("setInformativeText:"), Messages{"setInformativeText: "});
    EXPECT_EQ(only("setAlertStyle:"), Messages{"setAlertStyle: informational"});
}

TEST_F(DialogMessages, areSentThroughTheMainQueue_fromAnotherThread) {
    std::thread([] { tw_mac::Alert("words", true); }).join();
    tw_mac::Alert("words", true);
    EXPECT_EQ(only("dispatch_sync"), Messages{"dispatch_sync"});
    EXPECT_EQ(recorder().messages.front(), "dispatch_sync");
}

}  // namespace
