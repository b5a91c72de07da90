// The real dialogs in real windows, used by a robot.
#include "platform/mac/dialogs.h"

#include <algorithm>
#include <cstdlib>
#include <thread>

#include "tests/platform/robot.h"
#include "tests/platform/screen.h"
#include "tests/platform/spies.h"

namespace {

using twtest::alertSeen;
using twtest::Dialog;
using twtest::panelSeen;
using twtest::Robot;
using twtest::ScreenPoint;
using Names = std::vector<std::string>;

// The robot looks 50 times a second.
constexpr int kLooksUntilDrawn = 15;

bool contains(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Uses the real mouse and keyboard; in the background, since the window must go on meanwhile.
void useScreen(const std::string& command) {
    std::thread([command] {
        if (std::system(command.c_str()) != 0) std::puts("xdotool failed");
    }).detach();
}

std::string clickAt(ScreenPoint point) {
    return "xdotool mousemove " + std::to_string(point.x) + " " + std::to_string(point.y) +
           " sleep 0.2 mousedown 1 sleep 0.1 mouseup 1 sleep 0.2";
}

bool cancel(Dialog& dialog) {
    return dialog.click("Cancel");
}

class PickCube : public twtest::ScreenTest {
protected:
    void SetUp() override {
        ScreenTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        twtest::watchDialogs();
        for (const char* name :
             {"alpha.cube", "été.cube", "UPPER.CUBE", "notes.txt", "sub/x.cube"}) {
            write(std::string("LUTs/") + name, "LUT_3D_SIZE 2\n");
        }
        luts_ = home() / "LUTs";
    }

    // Picks that row and presses OK.
    std::string pick(const std::string& row) {
        Robot robot([&](Dialog& dialog) { return dialog.selectRow(row) && dialog.click("OK"); });
        const std::string path = tw_mac::PickCube(luts_);
        EXPECT_TRUE(robot.acted());
        return path;
    }

    std::string luts_;
};

TEST_F(PickCube, asksForOneCubeFile) {
    Names rows;
    int looks = 0;
    Robot robot([&](Dialog& dialog) {
        if (++looks == 1) {
            EXPECT_TRUE(dialog.selectRow("alpha.cube"));
        }
        if (looks < kLooksUntilDrawn) return false;
        EXPECT_TRUE(dialog.isOpenPanel());
        EXPECT_EQ(dialog.title(), "Tintwell: choose a LUT");
        EXPECT_FALSE(dialog.takesFolders());
        EXPECT_FALSE(dialog.takesSeveral());
        EXPECT_EQ(dialog.folder(), luts_);
        rows = dialog.rows();
        std::sort(rows.begin(), rows.end());
        twtest::takePicture("open-panel");
        return dialog.click("OK");
    });
    EXPECT_EQ(tw_mac::PickCube(luts_), luts_ + "/alpha.cube");
    EXPECT_EQ(panelSeen().message, "Choose a .cube LUT to store in this Tintwell effect.");
    EXPECT_TRUE(panelSeen().restricted);
    EXPECT_EQ(rows, (Names{"UPPER.CUBE", "alpha.cube", "sub", "été.cube"}));
}

TEST_F(PickCube, givesANameBeyondAscii_asUtf8) {
    EXPECT_EQ(pick("été.cube"), luts_ + "/été.cube");
}

TEST_F(PickCube, takesAnUpperCaseExtension) {
    EXPECT_EQ(pick("UPPER.CUBE"), luts_ + "/UPPER.CUBE");
}

TEST_F(PickCube, givesNothing_whenCancelled) {
    Robot robot(cancel);
    EXPECT_EQ(tw_mac::PickCube(luts_), "");
    EXPECT_TRUE(robot.acted());
}

TEST_F(PickCube, opensSomewhere_whenTheFolderIsMissing) {
    Robot robot(cancel);
    EXPECT_EQ(tw_mac::PickCube("/no/such/folder"), "");
    EXPECT_TRUE(robot.acted());
}

TEST_F(PickCube, opensSomewhere_withoutAFolder) {
    Robot robot(cancel);
    EXPECT_EQ(tw_mac::PickCube(""), "");
    EXPECT_TRUE(robot.acted());
}

TEST_F(PickCube, opensSomewhere_whenTheFolderIsNotUtf8) {
    Robot robot(cancel);
    EXPECT_EQ(tw_mac::PickCube("/tmp/\xff\xfe"), "");
    EXPECT_TRUE(robot.acted());
}

TEST_F(PickCube, offersAllFiles_whenTheTypeIsUnknown) {
    twtest::forgetFileTypes();
    EXPECT_EQ(pick("notes.txt"), luts_ + "/notes.txt");
    EXPECT_FALSE(panelSeen().restricted);
}

TEST_F(PickCube, showsOnTheMainThread_whenCalledOnAnother) {
    bool shownOnMainThread = false;
    bool calledOnMainThread = true;
    Robot robot([&](Dialog& dialog) {
        shownOnMainThread = twtest::onMainThread();
        return dialog.selectRow("alpha.cube") && dialog.click("OK");
    });
    std::string path;
    twtest::whileApplicationRuns([&] {
        calledOnMainThread = twtest::onMainThread();
        path = tw_mac::PickCube(luts_);
    });
    EXPECT_FALSE(calledOnMainThread);
    EXPECT_TRUE(shownOnMainThread);
    EXPECT_EQ(path, luts_ + "/alpha.cube");
}

TEST_F(PickCube, worksWithTheMouse) {
    Robot robot([](Dialog& dialog) {
        if (!contains(dialog.rows(), "alpha.cube")) return false;
        useScreen(clickAt(dialog.rowOnScreen("alpha.cube")) + "; " +
                  clickAt(dialog.buttonOnScreen("OK")));
        return true;
    });
    EXPECT_EQ(tw_mac::PickCube(luts_), luts_ + "/alpha.cube");
}

TEST_F(PickCube, isCancelled_withTheEscapeKey) {
    Robot robot([](Dialog&) {
        useScreen("sleep 0.3; xdotool key Escape");
        return true;
    });
    EXPECT_EQ(tw_mac::PickCube(luts_), "");
    EXPECT_TRUE(robot.acted());
}

class Alert : public twtest::ScreenTest {
protected:
    void SetUp() override {
        ScreenTest::SetUp();
        if (!IsSkipped() && !HasFatalFailure()) twtest::watchDialogs();
    }

    static void expectOneAlert() {
        EXPECT_EQ(alertSeen().runs, 1);
        EXPECT_EQ(alertSeen().released, 1);
        EXPECT_EQ(alertSeen().buttons, 1u);
        EXPECT_EQ(alertSeen().headline, "Tintwell");
    }
};

constexpr char kMessage[] = "Tintwell could not read this LUT:\n/LUTs/clé “x” 日本.cube";

bool pressOk(Dialog& dialog) {
    return dialog.click("OK");
}

TEST_F(Alert, showsHeadlineMessageAndOneButton) {
    int looks = 0;
    Robot robot([&](Dialog& dialog) {
        if (++looks < kLooksUntilDrawn) return false;
        EXPECT_TRUE(contains(dialog.texts(), "Tintwell"));
        EXPECT_TRUE(contains(dialog.texts(), kMessage));
        EXPECT_EQ(dialog.buttons(), Names{"OK"});
        twtest::takePicture("alert");
        return dialog.click("OK");
    });
    tw_mac::Alert(kMessage, true);
    EXPECT_TRUE(robot.acted());
    expectOneAlert();
    EXPECT_EQ(alertSeen().text, kMessage);
}

TEST_F(Alert, hasTheWarningStyle_whenAsked) {
    Robot robot(pressOk);
    tw_mac::Alert(kMessage, true);
    expectOneAlert();
    EXPECT_EQ(alertSeen().style, 0);
}

TEST_F(Alert, isInformational_otherwise) {
    Robot robot(pressOk);
    tw_mac::Alert(kMessage, false);
    expectOneAlert();
    EXPECT_EQ(alertSeen().style, 1);
}

TEST_F(Alert, hasNoText_whenTheMessageIsNotUtf8) {
    Robot robot(pressOk);
    tw_mac::Alert("\xff\xfe", true);
    expectOneAlert();
    EXPECT_EQ(alertSeen().text, "");
}

TEST_F(Alert, holdsACallerOnAnotherThread_untilItIsClosed) {
    bool shownOnMainThread = false;
    std::atomic<bool> closed{false};
    bool closedOnReturn = false;
    Robot robot([&](Dialog& dialog) {
        shownOnMainThread = twtest::onMainThread();
        closed = true;
        return dialog.click("OK");
    });
    twtest::whileApplicationRuns([&] {
        tw_mac::Alert(kMessage, true);
        closedOnReturn = closed;
    });
    EXPECT_TRUE(shownOnMainThread);
    EXPECT_TRUE(closedOnReturn);
    expectOneAlert();
}

TEST_F(Alert, isClosed_withTheMouse) {
    Robot robot([](Dialog& dialog) {
        useScreen(clickAt(dialog.buttonOnScreen("OK")));
        return true;
    });
    tw_mac::Alert(kMessage, true);
    expectOneAlert();
}

TEST_F(Alert, isClosed_withTheReturnKey) {
    Robot robot([](Dialog&) {
        useScreen("sleep 0.3; xdotool key Return");
        return true;
    });
    tw_mac::Alert(kMessage, true);
    expectOneAlert();
}

}  // namespace
