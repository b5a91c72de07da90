// The commands of tintwell-host other than render.
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

using OtherCommands = Program;

TEST_F(OtherCommands, patternDrawsThePatches) {
    runWell("pattern --size 2 --frame 8x4 out.png");
    const std::vector<std::uint8_t> pixels = bytes("out.png");
    ASSERT_EQ(pixels.size(), 8u * 4u * 4u);
    EXPECT_EQ((std::vector<std::uint8_t>(pixels.begin(), pixels.begin() + 12)),
              (std::vector<std::uint8_t>{0, 0, 0, 255, 0, 0, 0, 255, 255, 0, 0, 255}));
    EXPECT_EQ((std::vector<std::uint8_t>(pixels.end() - 4, pixels.end())),
              (std::vector<std::uint8_t>{255, 255, 255, 255}));
}

TEST_F(OtherCommands, patternRefusesSizes) {
    runWrong("pattern --size 65 --frame 8x4 out.png",
             "cannot use 'TWLUTP 65': bad calibration pattern size");
    runWrong("pattern --size 2 --frame 8by4 out.png",
             "'8by4' is no frame size; write it as 1920x1080");
    EXPECT_FALSE(exists("out.png"));
}

TEST_F(OtherCommands, encodeFollowsTheButtonsRules) {
    writeNegative("My LUT.final.cube");
    twtest::writeFile(file("My LUT.final.cube"),
                      twtest::readFile(file("My LUT.final.cube")) + "# Tintwell match 42\n");
    EXPECT_EQ(runWell("encode 'My LUT.final.cube'").substr(0, 34),
              "TWLUT3 42 My%20LUT.final 2 0 1 ///");
}

TEST_F(OtherCommands, decodeWritesTheCubeBack) {
    writeNegative("negative.cube");
    twtest::writeFile(file("text"), runWell("encode negative.cube"));
    runWell("decode text back.cube");
    EXPECT_EQ(twtest::readFile(file("back.cube")),
              "TITLE \"negative\"\n" + twtest::readFile(file("negative.cube")));
}

TEST_F(OtherCommands, decodeReadsStandardInput) {
    writeNegative("negative.cube");
    twtest::writeFile(file("text"), runWell("encode negative.cube"));
    runWell("decode - back.cube <text");
    EXPECT_EQ(runWell("encode back.cube"),
              "TWLUT3 0 back 2 0 1 " + twtest::readFile(file("text")).substr(24));
}

TEST_F(OtherCommands, decodeRefusesWhatHoldsNoLut) {
    twtest::writeFile(file("none"), "TWLUT0");
    twtest::writeFile(file("other"), "hello");
    runWrong("decode none out.cube", "cannot write 'out.cube': 'none' holds no LUT");
    runWrong("decode other out.cube",
             "cannot use 'other': not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> "
             "<data>)");
    EXPECT_FALSE(exists("out.cube"));
}

TEST_F(OtherCommands, inspectPrintsEffectAndLook) {
    writeNegative("negative.cube");
    const std::string printed = runWell("inspect negative.cube");
    EXPECT_EQ(printed,
              "effect      Tintwell (TNWL Tintwell), in Color Correction\n"
              "interface   13.29, entry point EffectMain\n"
              "support     https://tintwell.example/support\n"
              "version     0x8000B, flags 0x4000400 and 0x8000000\n"
              "parameter 1 \"Amount\", type 10, id 2\n"
              "parameter 2 \"LUT\", type 11, id 4\n"
              "parameter 3 \"LUT \", type 15, id 5, labelled Change LUT\n"
              "parameter 4 \"Match\", type 15, id 7, labelled Edit LUT\n"
              "LUT         \"negative\", match 0, 2 points an axis, values 0 to 1\n"
              "Amount      100 percent\n");
    twtest::writeFile(file("text"), runWell("encode negative.cube"));
    EXPECT_EQ(runWell("inspect text"), printed);
}

TEST_F(OtherCommands, inspectReadsAProject) {
    writeInput("in.png");
    writeNegative("negative.cube");
    runWell("render in.png out.png --lut negative.cube --amount 12.5 --save a.project");
    const std::string printed = runWell("inspect a.project");
    EXPECT_NE(printed.find("LUT         \"negative\", match 0, 2 points"), std::string::npos)
        << printed;
    EXPECT_NE(printed.find("Amount      12.5 percent\n"), std::string::npos) << printed;
}

TEST_F(OtherCommands, logShowsWhatTheEffectWrote) {
    EXPECT_EQ(run("log").out, "");
    writeInput("in.png");
    runWell("render in.png out.png");
    const std::string log = runWell("log");
    EXPECT_NE(log.find("  GlobalSetup build 11 host=PrMr api="), std::string::npos) << log;
    EXPECT_NE(log.find("  Render fmt=BGRA8u 7x5 rowbytes="), std::string::npos) << log;
}

TEST_F(OtherCommands, homeIsWhereTheUserSays) {
    writeInput("in.png");
    runWell("--home there render in.png out.png");
    EXPECT_TRUE(exists("there/Library/Application Support/Tintwell/effect.log"));
    runWell("render in.png out.png");
    EXPECT_TRUE(
        exists(".local/state/tintwell-host/Library/Application Support/Tintwell/effect.log"));
}

TEST_F(OtherCommands, helpIsNoFailure) {
    EXPECT_NE(runWell("--help").find("render"), std::string::npos);
    EXPECT_EQ(run("").exitCode, 2);
    EXPECT_EQ(run("nothing").exitCode, 2);
}

}  // namespace
}  // namespace program_test
