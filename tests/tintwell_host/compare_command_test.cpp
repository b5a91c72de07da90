// `tintwell-host compare`.
#include <limits>

#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

class CompareCommand : public Program {
protected:
    // Two pixels, grey but for one channel of the second.
    void writeFloats(const std::string& name, float value, std::size_t channel = 1) {
        program::Picture picture;
        picture.width = 2;
        picture.height = 1;
        picture.depth = program::Depth::kFloat;
        picture.hasAlpha = true;
        picture.floats.assign(8, 0.5f);
        picture.floats[4 + channel] = value;
        program::writePicture(file(name), picture);
    }
};

TEST_F(CompareCommand, saysSo_whenAllIsTheSame) {
    writeFloats("a.exr", 0.25f);
    writeFloats("b.tif", 0.25f);
    EXPECT_EQ(runWell("compare a.exr b.tif"), "all 8 values are the same\n");
}

TEST_F(CompareCommand, tellsHowFarAndWhere_andFails) {
    writeFloats("a.exr", 0.25f);
    writeFloats("b.exr", 0.75f);
    const Outcome outcome = run("compare a.exr b.exr");
    EXPECT_EQ(outcome.out,
              "1 of 8 values differ, by at most 0.5\n"
              "first at column 1, row 0, green: 0.25 and 0.75\n");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "tintwell-host: 'a.exr' and 'b.exr' differ\n");
}

TEST_F(CompareCommand, succeeds_withinWhatIsAllowed) {
    writeFloats("a.exr", 0.25f);
    writeFloats("b.exr", 0.75f);
    EXPECT_EQ(runWell("compare a.exr b.exr --within 0.5").substr(0, 6), "1 of 8");
    EXPECT_EQ(run("compare a.exr b.exr --within 0.49").exitCode, 1);
}

TEST_F(CompareCommand, takesANumberBesideNone_forInfinitelyFar) {
    writeFloats("a.exr", 0.25f, 3);
    writeFloats("b.exr", std::numeric_limits<float>::quiet_NaN(), 3);
    const Outcome outcome = run("compare a.exr b.exr --within 1e30");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.out.substr(0, 37), "1 of 8 values differ, by at most inf\n");
    EXPECT_EQ(runWell("compare b.exr b.exr"), "all 8 values are the same\n");
}

TEST_F(CompareCommand, comparesPicturesOfEightBits) {
    writeInput("a.png");
    EXPECT_EQ(runWell("compare a.png a.png"), "all 140 values are the same\n");
}

TEST_F(CompareCommand, refusesPicturesOfTwoSizes) {
    writeInput("a.png", 7, 5);
    writeInput("b.png", 5, 7);
    runWrong("compare a.png b.png",
             "cannot compare 'a.png' with 'b.png': one has 7x5 pixels, the other 5x7");
}

TEST_F(CompareCommand, refusesWhatIsNoPicture) {
    writeInput("a.png");
    twtest::writeFile(file("b.png"), "no picture");
    EXPECT_EQ(run("compare a.png b.png").exitCode, 1);
    EXPECT_EQ(run("compare a.png missing.png").exitCode, 1);
    EXPECT_EQ(run("compare a.png a.png --within -1").exitCode, 2);
}

}  // namespace
}  // namespace program_test
