// An editor's whole session with the plug-in, in real windows: the module, the simulated host, and
// a robot at the dialogs.
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "host_sim/host.h"
#include "tests/platform/robot.h"
#include "tests/platform/screen.h"
#include "tests/support/parameter_indices.h"

namespace {

using host_sim::Frame;
using host_sim::Host;
using host_sim::Instance;
using twtest::Dialog;
using twtest::kEditButton;
using twtest::kLut;
using twtest::kLutButton;
using twtest::Robot;

namespace fs = std::filesystem;

// The robot looks 50 times a second.
constexpr int kLooksUntilDrawn = 15;

class EditorSession : public twtest::ScreenTest {
protected:
    void SetUp() override {
        ScreenTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) return;
        const std::string luts = home() / "Documents/Tintwell LUTs";
        fs::create_directories(luts);
        fs::copy(TINTWELL_EXAMPLES, luts, fs::copy_options::recursive);
        const std::string look = twtest::readFile(luts + "/golden-hour.cube");
        write("Documents/Tintwell LUTs/Dusk \"two\".cube", "# Tintwell match 42\n" + look);
    }

    std::string request() const { return twtest::readFile(home().dataFile("edit-request.json")); }

    static void pickLut(Instance& effect, const std::string& row, const char* picture = nullptr) {
        int looks = 0;
        Robot robot([&](Dialog& dialog) {
            if (++looks == 1) {
                EXPECT_TRUE(dialog.selectRow(row));
            }
            if (looks < kLooksUntilDrawn) return false;
            if (picture) twtest::takePicture(picture);
            return dialog.click("OK");
        });
        const host_sim::CommandResult result = effect.press(kLutButton);
        EXPECT_TRUE(robot.acted());
        EXPECT_EQ(result.error, PF_Err_NONE);
        EXPECT_EQ(result.changed, std::vector<int>{kLut});
        EXPECT_EQ(result.out.out_flags, PF_OutFlag_REFRESH_UI | PF_OutFlag_FORCE_RERENDER);
    }

    // Presses the Edit LUT button; returns what an alert said, nothing if there was none.
    static std::vector<std::string> pressEdit(Instance& effect, const char* picture = nullptr) {
        int looks = 0;
        std::vector<std::string> said;
        Robot robot([&](Dialog& dialog) {
            if (++looks < kLooksUntilDrawn) return false;
            said = dialog.texts();
            if (picture) twtest::takePicture(picture);
            return dialog.click("OK");
        });
        EXPECT_EQ(effect.press(kEditButton).error, PF_Err_NONE);
        return said;
    }

    static Frame picture(const Host& host) {
        Frame frame(host.format(8), 64, 16);
        for (int y = 0; y < frame.height(); ++y) {
            for (int x = 0; x < frame.width(); ++x) {
                const auto level = static_cast<std::uint8_t>(4 * x);
                frame.setPixel8(x, y, {level, static_cast<std::uint8_t>(16 * y), 128, 255});
            }
        }
        return frame;
    }

    static std::vector<std::uint8_t> rendered(Host& host, Instance& effect) {
        Frame out(host.format(8), 64, 16);
        EXPECT_EQ(effect.render(picture(host), out).error, PF_Err_NONE);
        return out.pixelBytes();
    }
};

TEST_F(EditorSession, showsSavesLoadsAndEditsAPickedLut) {
    const std::string project = home() / "film.project";
    std::vector<std::uint8_t> graded;
    {
        Host host(TINTWELL_MODULE, host_sim::premierePro());
        host.start();
        Instance& effect = host.apply();
        effect.updateUi();
        EXPECT_EQ(effect.label(kLutButton), "Choose a LUT");
        EXPECT_EQ(rendered(host, effect), picture(host).pixelBytes());
        EXPECT_FALSE(effect.needsRender());

        pickLut(effect, "bleach-bypass.cube", "session-open-panel");
        EXPECT_EQ(effect.label(kLutButton), "bleach-bypass.cube");
        EXPECT_TRUE(effect.needsRender());
        graded = rendered(host, effect);
        EXPECT_NE(graded, picture(host).pixelBytes());
        host.save(effect, project);
    }
    // The project must not need the .cube file.
    fs::rename(home() / "Documents", home() / "elsewhere");

    Host host(TINTWELL_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.load(project);
    effect.updateUi();
    EXPECT_EQ(effect.label(kLutButton), "bleach-bypass.cube");
    EXPECT_EQ(rendered(host, effect), graded);

    const std::vector<std::string> said = pressEdit(effect, "session-alert");
    ASSERT_GE(said.size(), 2u);
    EXPECT_EQ(said[0], "Tintwell");
    EXPECT_NE(said[1].find("so there is no match to open"), std::string::npos) << said[1];
    EXPECT_EQ(request(), "");

    fs::rename(home() / "elsewhere", home() / "Documents");
    pickLut(effect, "golden-hour.cube");
    EXPECT_EQ(effect.label(kLutButton), "golden-hour.cube");
    EXPECT_EQ(pressEdit(effect), std::vector<std::string>());
    EXPECT_TRUE(request().starts_with("{\"id\":20261120,\"name\":\"golden-hour\",\"at\":"));
}

TEST_F(EditorSession, requestsAMatchWithQuotesInItsName_inAfterEffects) {
    Host host(TINTWELL_MODULE, host_sim::afterEffects());
    host.start();
    Instance& effect = host.apply();
    pickLut(effect, "Dusk \"two\".cube");
    EXPECT_EQ(effect.label(kLutButton), "Dusk \"two\".cube");
    EXPECT_EQ(pressEdit(effect), std::vector<std::string>());
    EXPECT_TRUE(request().starts_with(R"({"id":42,"name":"Dusk \"two\"","at":)")) << request();
}

TEST_F(EditorSession, refusesAnUnreadableFile_withAnAlert) {
    write("Documents/Tintwell LUTs/broken.cube", "LUT_3D_SIZE 2\n");
    Host host(TINTWELL_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    std::vector<std::string> said;
    Robot robot([&](Dialog& dialog) {
        if (dialog.isOpenPanel()) {
            if (dialog.selectRow("broken.cube")) dialog.click("OK");
            return false;
        }
        said = dialog.texts();
        return dialog.click("OK");
    });
    EXPECT_EQ(effect.press(kLutButton).changed, std::vector<int>());
    EXPECT_TRUE(robot.acted());
    ASSERT_GE(said.size(), 2u);
    EXPECT_EQ(said[1], "Tintwell could not read this LUT:\n" + home().path() +
                           "/Documents/Tintwell LUTs/broken.cube");
}

// In a session for each command, as a user at a terminal works, with the keyboard.
TEST_F(EditorSession, pressesAndRenders_inTintwellHost) {
    const std::string script = "cd '" + home().path() +
                               "' && host() { '" TINTWELL_HOST "' --home '" + home().path() +
                               R"(' "$@"; }
        host press lut --save look.project >said 2>&1 &
        xdotool search --sync --onlyvisible --name 'choose a LUT' >/dev/null
        sleep 0.5
        xdotool type --delay 40 bleach-bypass.cube
        sleep 0.3
        xdotool key Return
        wait $! &&
        host pattern --size 5 --frame 32x16 before.png &&
        host render before.png after.png --project look.project &&
        host render before.png expected.png --lut 'Documents/Tintwell LUTs/bleach-bypass.cube' &&
        cmp after.png expected.png && ! cmp -s after.png before.png)";
    EXPECT_EQ(std::system(script.c_str()), 0) << twtest::readFile(home() / "said");
    EXPECT_EQ(twtest::readFile(home() / "said"), "The LUT button says \"bleach-bypass.cube\".\n");
}

TEST_F(EditorSession, rendersOnOtherThreads_whileADialogIsOpen) {
    Host host(TINTWELL_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    Instance& other = host.apply();
    std::atomic<bool> closed{false};
    std::atomic<int> frames{0};
    std::thread renderer([&] {
        while (!closed) {
            rendered(host, other);
            ++frames;
        }
    });
    int framesBefore = -1;
    Robot robot([&](Dialog& dialog) {
        if (framesBefore < 0) framesBefore = frames;
        if (frames < framesBefore + 3) return false;
        return dialog.selectRow("golden-hour.cube") && dialog.click("OK");
    });
    twtest::whileApplicationRuns([&] {
        EXPECT_EQ(effect.press(kLutButton).changed, std::vector<int>{kLut});
        closed = true;
    });
    renderer.join();
    EXPECT_TRUE(robot.acted());
    EXPECT_EQ(effect.label(kLutButton), "golden-hour.cube");
}

}  // namespace
