// Commands that the effect answers without work, the About box, and the log of button presses.
#include <cstring>
#include <string>

#include "tests/support/effect_fixture.h"

namespace twtest {
namespace {

using Dispatch = EffectTest;

class UnlistedCommand : public EffectTest, public ::testing::WithParamInterface<PF_Cmd> {};

TEST_P(UnlistedCommand, returnsZeroAndTouchesNothing) {
    start();
    newLogLines();
    const PF_OutData preset = fullOutData();
    host->outPreset() = preset;
    const host_sim::CommandResult result = host->command(GetParam());
    EXPECT_EQ(result.error, 0);
    EXPECT_TRUE(sameBytes(result.out, preset));
    EXPECT_EQ(newLogLines(), Lines());
}

// The hosts' command numbers, and unknown ones.
INSTANTIATE_TEST_SUITE_P(Commands, UnlistedCommand,
                         ::testing::Values(2, 3, 5, 6, 7, 8, 9, 10, 12, 15, 16, 17, 18, 19, 20, 21,
                                           23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 1000,
                                           -1));

TEST_F(Dispatch, returnsZero_whenSequenceAndFrameAreSetUpWithParams) {
    host_sim::Instance& effect = start();
    host->outPreset() = fullOutData();
    for (const PF_Cmd command :
         {PF_Cmd_SEQUENCE_SETUP, PF_Cmd_FRAME_SETUP, PF_Cmd_SMART_PRE_RENDER}) {
        const host_sim::CommandResult result = effect.command(command);
        EXPECT_EQ(result.error, 0) << command;
        EXPECT_TRUE(sameBytes(result.out, host->outPreset())) << command;
    }
}

TEST_F(Dispatch, saysNameVersionAndPurpose_whenAbout) {
    start();
    const host_sim::CommandResult result = host->command(PF_Cmd_ABOUT);
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.message(),
              "Tintwell 1.0\rApplies the colour match made in the Tintwell panel.");
}

TEST_F(Dispatch, writesTheMessageAndItsTerminatorOnly_whenAboutFindsAFullRecord) {
    start();
    const PF_OutData preset = fullOutData();
    host->outPreset() = preset;
    host_sim::CommandResult result = host->command(PF_Cmd_ABOUT);
    const std::string text = "Tintwell 1.0\rApplies the colour match made in the Tintwell panel.";
    EXPECT_EQ(std::string(result.out.return_msg, text.size() + 1), text + '\0');
    std::memcpy(result.out.return_msg, preset.return_msg, sizeof preset.return_msg);
    EXPECT_TRUE(sameBytes(result.out, preset));
}

TEST_F(Dispatch, logsNothing_whenAbout) {
    start();
    newLogLines();
    host->command(PF_Cmd_ABOUT);
    EXPECT_EQ(newLogLines(), Lines());
}

TEST_F(Dispatch, logsTheIndex_whenAParameterWithoutButtonChanged) {
    host_sim::Instance& effect = start();
    newLogLines();
    const PF_OutData preset = host->outPreset();
    for (const A_long index : {1, 2, 0, 5, -3}) {
        PF_UserChangedParamExtra changed = {index};
        const host_sim::CommandResult result = effect.command(PF_Cmd_USER_CHANGED_PARAM, &changed);
        EXPECT_EQ(result.error, 0) << index;
        EXPECT_TRUE(sameBytes(result.out, preset)) << index;
        EXPECT_EQ(newLogLines(), Lines({"USER_CHANGED_PARAM index " + std::to_string(index)}));
    }
}

TEST_F(Dispatch, logsMinusOne_whenTheChangedParameterIsNotTold) {
    host_sim::Instance& effect = start();
    newLogLines();
    EXPECT_EQ(effect.pressWithoutRecord().error, 0);
    EXPECT_EQ(newLogLines(), Lines({"USER_CHANGED_PARAM index -1"}));
}

}  // namespace
}  // namespace twtest
