// The command measure: files, reports, projects, and what is refused.
#include <nlohmann/json.hpp>

#include "native/src/lut_text.h"
#include "tests/tintwell_host/program_fixture.h"
#include "tintwell_host/files/cube_file.h"

namespace program_test {
namespace {

class MeasureCommand : public Program {
protected:
    void SetUp() override { runWell("pattern --size 3 --frame 280x160 pattern.png"); }

    // The pattern after a grade that turns every colour into its negative.
    void gradeNegative() {
        writeNegative("negative.cube");
        runWell("render pattern.png graded.png --lut negative.cube");
    }

    tw::Lut3D lutOf(const std::string& name) const {
        return program::lutFromText(twtest::readFile(file(name)), name);
    }
};

TEST_F(MeasureCommand, reports) {
    EXPECT_EQ(runWell("measure pattern.png --size 3 --id 7 --name Dusk"),
              "pattern     3 steps in 7 x 4 patches, the smallest 40 x 40 pixels, "
              "each read from 400 of them or more\n"
              "noise       0 steps of 8 bits in the middle patch, 0 in the noisiest (0 0 0)\n"
              "exactness   points are right to about 0.25 steps of 8 bits, the worst to 0.5\n"
              "LUT         \"Dusk\", match 7, 3 points an axis, values 0 to 1\n");
}

TEST_F(MeasureCommand, promisesMoreOfFloatPictures) {
    runWell("pattern --size 3 --frame 280x160 --depth float pattern.exr");
    EXPECT_NE(runWell("measure pattern.exr --size 3").find("to about 0 steps of 8 bits"),
              std::string::npos);
}

TEST_F(MeasureCommand, advises_whenThereIsMuchNoise) {
    program::Picture picture = program::readPicture(file("pattern.png"), program::Depth::k8);
    for (std::size_t i = 0; i < picture.bytes.size(); i += 8)
        picture.bytes[i] ^= 8;
    program::writePicture(file("rough.png"), picture);
    EXPECT_NE(runWell("measure rough.png --size 3").find("advice      less compression"),
              std::string::npos);
}

TEST_F(MeasureCommand, readsThePictureOnce) {
    const std::string options = " --size 3 -o look.cube";
    std::filesystem::create_symlink("/dev/stdin", file("pipe.png"));
    EXPECT_EQ(runWell("measure pipe.png" + options, "cat pattern.png |"),
              runWell("measure pattern.png" + options));
}

TEST_F(MeasureCommand, reportsAsJson) {
    const auto report = nlohmann::json::parse(
        runWell("measure pattern.png --size 3 --id 9007199254740993 --name Dusk --json"));
    EXPECT_EQ(report["size"], 3);
    EXPECT_EQ(report["id"], 9007199254740993);
    EXPECT_EQ(report["name"], "Dusk");
    EXPECT_EQ(report["lowest"], 0.0);
    EXPECT_EQ(report["highest"], 1.0);
    EXPECT_EQ(report["columns"], 7);
    EXPECT_EQ(report["rows"], 4);
    EXPECT_EQ(report["patch_width"], 40);
    EXPECT_EQ(report["patch_height"], 40);
    EXPECT_EQ(report["pixels_read"], 400);
    EXPECT_EQ(report["noise"], std::vector<float>(27));
}

TEST_F(MeasureCommand, writesATextThatRenderTakes) {
    gradeNegative();
    runWell("measure graded.png --size 3 --id 42 --name 'My look' -o look.twlut");
    EXPECT_TRUE(twtest::readFile(file("look.twlut")).starts_with("TWLUT3 42 My%20look 3 0 1 "));
    EXPECT_TRUE(twtest::readFile(file("look.twlut")).ends_with("\n"));
    writeInput("in.png");
    runWell("render in.png out.png --text look.twlut");
    EXPECT_EQ(bytes("out.png"), negative(bytes("in.png")));
}

TEST_F(MeasureCommand, writesACubeFileWithTheMatch) {
    gradeNegative();
    runWell("measure graded.png --size 3 --id 42 --name Dusk -o look.cube");
    EXPECT_TRUE(twtest::readFile(file("look.cube"))
                    .starts_with("TITLE \"Dusk\"\n# Tintwell match 42\nLUT_3D_SIZE 3\n1 1 1\n"));
    writeInput("in.png");
    runWell("render in.png out.png --lut look.cube");
    EXPECT_EQ(bytes("out.png"), negative(bytes("in.png")));
}

TEST_F(MeasureCommand, sendsTheLookIntoAProjectAndKeepsItsAmount) {
    gradeNegative();
    runWell("render pattern.png other.png --amount 25 --save look.project");
    runWell("measure graded.png --size 3 --id 42 --name Dusk --project look.project");
    const std::string told = runWell("inspect look.project");
    EXPECT_NE(told.find("LUT         \"Dusk\", match 42, 3 points an axis, values 0 to 1\n"),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("Amount      25 percent\n"), std::string::npos) << told;
    EXPECT_NE(runWell("log").find("  Arb SCAN\n"), std::string::npos);
}

TEST_F(MeasureCommand, takesNamesOf399EncodedCharactersAndNoMore) {
    runWell("measure pattern.png --size 3 -o look.twlut --name '" + std::string(133, '"') + "'");
    EXPECT_EQ(lutOf("look.twlut").name, std::string(133, '"'));
    runWrong("measure pattern.png --size 3 -o long.twlut --name '" + std::string(400, 'n') + "'",
             "the name is too long: it takes 400 characters when encoded, and may take 399");
    EXPECT_FALSE(exists("long.twlut"));
}

TEST_F(MeasureCommand, refusesTheNameThatStandsForNone) {
    runWrong("measure pattern.png --size 3 --name=-",
             "a look cannot be named '-': that stands for no name");
}

TEST_F(MeasureCommand, refusesARangeThatCannotBeStored) {
    program::Picture picture = program::readPicture(file("pattern.png"), program::Depth::kFloat);
    for (float& value : picture.floats)
        value = (value * 2.0f - 1.0f) * 3e38f;
    program::writePicture(file("huge.exr"), picture);
    runWrong("measure huge.exr --size 3",
             "the values of the look span too wide a range to be stored");
}

TEST_F(MeasureCommand, saysWhyItCannotMeasure) {
    writeInput("in.png", 64, 36);
    runWrong("measure in.png --size 9 -o look.cube",
             "cannot measure 'in.png': its patches would be 1x1 pixels, and must be 6x6 or more: "
             "a pattern of 9 steps needs a frame of 224x126 or more");
    EXPECT_FALSE(exists("look.cube"));
}

TEST_F(MeasureCommand, leavesTheProjectAlone_whenItCannotMeasure) {
    runWell("render pattern.png other.png --amount 25 --save look.project");
    const std::string before = twtest::readFile(file("look.project"));
    EXPECT_EQ(run("measure other.png --size 9 --project look.project").exitCode, 1);
    EXPECT_EQ(twtest::readFile(file("look.project")), before);
}

TEST_F(MeasureCommand, takesTheFrameOfAnUnevenlyScaledPicture) {
    runWell("pattern --size 3 --frame 280x320 tall.png");
    EXPECT_EQ(run("measure tall.png --size 3 --frame 280x160").exitCode, 1);
    EXPECT_EQ(run("measure tall.png --size 3 --frame 280x320").exitCode, 0);
    runWrong("measure tall.png --size 3 --frame 280",
             "'280' is no frame size; write it as 1920x1080");
}

TEST_F(MeasureCommand, refusesOtherFilesBeforeItMeasures) {
    runWrong("measure pattern.png --size 3 -o look.png",
             "cannot write 'look.png': a look is written as .cube or .twlut");
    runWrong("measure missing.png --size 3",
             "cannot read 'missing.png': No such file or directory");
    EXPECT_EQ(run("measure pattern.png --size 3 --project missing.project").exitCode, 1);
}

TEST_F(MeasureCommand, refusesSizesAndIds) {
    EXPECT_EQ(run("measure pattern.png").exitCode, 2);
    EXPECT_EQ(run("measure pattern.png --size 1").exitCode, 2);
    EXPECT_EQ(run("measure pattern.png --size 65").exitCode, 2);
    EXPECT_EQ(run("measure pattern.png --size 3 --id -1").exitCode, 2);
}

TEST_F(MeasureCommand, helpShowsTheWayFromPatternToLook) {
    const std::string help = runWell("measure --help");
    EXPECT_NE(help.find("tintwell-host pattern --size 33"), std::string::npos) << help;
    EXPECT_NE(help.find("tintwell-host measure graded.png"), std::string::npos) << help;
}

}  // namespace
}  // namespace program_test
