// tintwell-host press, with stand-ins for the dialogs. tests/platform has it with the real ones.
#include <dlfcn.h>

#include "tests/support/stand_in_dialogs.h"
#include "tests/tintwell_host/program_fixture.h"
#include "tintwell_host/subcommands.h"

namespace program_test {
namespace {

class PressCommand : public Program {
protected:
    PressCommand() {
        void* module = dlopen(TINTWELL_STAND_IN, RTLD_LOCAL | RTLD_NOW);
        void* entry = dlsym(module, "tintwell_stand_in_dialogs");
        dialogs_ = reinterpret_cast<decltype(&tintwell_stand_in_dialogs)>(entry)();
        *dialogs_ = {};
        effect_.module = TINTWELL_STAND_IN;
    }

    std::string press(const std::string& button, const std::string& save = "") {
        testing::internal::CaptureStdout();
        program::runPress({effect_, button, save});
        return testing::internal::GetCapturedStdout();
    }

    twtest::TempHome home_;
    program::EffectOptions effect_;
    twtest::StandInDialogs* dialogs_ = nullptr;
};

TEST_F(PressCommand, lutKeepsThePickedLookInTheProject) {
    writeNegative("negative.cube");
    dialogs_->pick = [this] { return file("negative.cube"); };
    EXPECT_EQ(press("lut", file("look.project")), "The LUT button says \"negative.cube\".\n");
    effect_.project = file("look.project");
    program::EffectSession session(effect_);
    EXPECT_EQ(session.storedText() + "\n", runWell("encode negative.cube"));
}

TEST_F(PressCommand, lutKeepsTheProjectsLook_whenCancelled) {
    writeNegative("negative.cube");
    dialogs_->pick = [this] { return file("negative.cube"); };
    press("lut", file("look.project"));
    effect_.project = file("look.project");
    dialogs_->pick = nullptr;
    press("lut", file("again.project"));
    EXPECT_EQ(twtest::readFile(file("again.project")), twtest::readFile(file("look.project")));
}

TEST_F(PressCommand, editPressesTheOtherButton) {
    press("edit");
    EXPECT_EQ(dialogs_->folders.size(), 0u);
    ASSERT_EQ(dialogs_->alerts.size(), 1u);
    EXPECT_FALSE(dialogs_->alerts[0].warning);
}

TEST_F(PressCommand, lutFails_whenTheEffectDoes) {
    dialogs_->pick = []() -> std::string { throw std::bad_alloc(); };
    try {
        program::runPress({effect_, "lut", file("look.project")});
        FAIL() << "no failure";
    } catch (const std::exception& failure) {
        EXPECT_STREQ(failure.what(), "the effect failed the press, with error 512");
    }
    EXPECT_FALSE(exists("look.project"));
}

}  // namespace
}  // namespace program_test
