// The sheets that `tintwell-host show` draws.
#include <cmath>

#include "looks/forms.h"
#include "tests/looks/cubes.h"
#include "tests/tintwell_host/packing.h"
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

class ShowCommand : public Program {
protected:
    // With a picture that is quick to draw.
    std::string sheet(const std::string& arguments) {
        writeInput("in.png", 32, 18);
        runWell("show --picture in.png " + arguments + " -o sheet.svg");
        return twtest::readFile(file("sheet.svg"));
    }
    static std::size_t count(const std::string& text, const std::string& word) {
        std::size_t found = 0;
        for (std::size_t at = text.find(word); at != std::string::npos;
             at = text.find(word, at + 1))
            ++found;
        return found;
    }
    void writeCurve(const std::string& name, float (*change)(float)) const {
        twtest::writeFile(file(name), looks::writeCube(looks_test::curveOf(5, change)));
    }
};

TEST_F(ShowCommand, drawsALookInOneFile) {
    writeNegative("Nega & tive.cube");
    runWell("show 'Nega & tive.cube' -o sheet.svg");
    const std::string svg = twtest::readFile(file("sheet.svg"));
    EXPECT_EQ(svg.substr(0, 38), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    // Before, after, five amounts, and where it clips.
    EXPECT_EQ(count(svg, "data:image/jpeg;base64,"), 8u);
    EXPECT_EQ(count(svg, "data:image/png"), 0u);
    EXPECT_EQ(count(svg, "<text"), 0u);
    EXPECT_NE(svg.find("<title>Nega &amp; tive</title>"), std::string::npos);
    EXPECT_NE(svg.find("Black becomes 1 1 1."), std::string::npos);
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

TEST_F(ShowCommand, isReadByOthers) {
    if (std::system("command -v rsvg-convert >/dev/null") != 0) {
        GTEST_SKIP() << "there is no rsvg-convert";
    }
    writeNegative("negative.cube");
    sheet("negative.cube");
    const std::string command =
        "rsvg-convert '" + file("sheet.svg") + "' -o '" + file("sheet.png") + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const program::Picture drawn = program::readPicture(file("sheet.png"), program::Depth::k8);
    EXPECT_EQ(drawn.width, 1600);
    EXPECT_EQ(drawn.height, 1290);
    const auto red = [&drawn](int x, int y) {
        return drawn.bytes[static_cast<std::size_t>(y * drawn.width + x) * 4];
    };
    EXPECT_EQ(red(5, 5), 0x17);
    // Before and after are negatives of one another.
    EXPECT_NEAR(red(424, 367) + red(1176, 367), 255, 12);
    EXPECT_NE(red(424, 367), 0x17);
}

TEST_F(ShowCommand, isTheSameEveryTime) {
    writeNegative("negative.cube");
    EXPECT_EQ(sheet("negative.cube"), sheet("negative.cube"));
}

TEST_F(ShowCommand, takesAPictureOfOnesOwn) {
    writeNegative("negative.cube");
    writeInput("other.png", 40, 7);
    runWell("show negative.cube --picture other.png -o other.svg");
    EXPECT_NE(twtest::readFile(file("other.svg")), sheet("negative.cube"));
    runWrong("show negative.cube --picture missing.png -o sheet.svg",
             "cannot read 'missing.png': No such file or directory");
}

TEST_F(ShowCommand, comparesTwoLooks) {
    writeCurve("one.cube", [](float in) { return in; });
    writeCurve("other.cube", [](float in) { return in * 0.5f; });
    const std::string svg = sheet("one.cube --compare other.cube");
    EXPECT_EQ(count(svg, "data:image/jpeg;base64,"), 4u);
    EXPECT_NE(svg.find("<title>one  and  other</title>"), std::string::npos);
    // Half of white, and half of the mean of all inputs.
    EXPECT_NE(svg.find("The largest difference is 128 steps of 8 bits, the mean 63.8;"),
              std::string::npos)
        << svg.substr(0, 600);
}

TEST_F(ShowCommand, takesALookFromAProject_inTwoCommands) {
    twtest::writeFile(file("a.prproj"), gzip(premiereProject({wide(lookText(1, 42, "Dusk"))})));
    runWell("looks a.prproj --extract looks");
    EXPECT_NE(sheet("looks/Dusk.cube").find("match 42"), std::string::npos);
    EXPECT_NE(sheet("looks/Dusk.twlut").find("match 42"), std::string::npos);
    EXPECT_NE(sheet("a.prproj").find("match 42"), std::string::npos);
}

TEST_F(ShowCommand, saysWhichLooks_whenThereAreSeveral) {
    twtest::writeFile(file("a.aep"), afterEffectsProject({wide(lookText(1, 1, "Dusk")),
                                                          wide(lookText(2, 2, "Dawn"))}));
    runWrong("show a.aep -o sheet.svg",
             "'a.aep' holds 2 looks, such as \"Dusk\", \"Dawn\"; write them into files with looks "
             "--extract");
    EXPECT_FALSE(exists("sheet.svg"));
}

TEST_F(ShowCommand, refusesALookThatWouldNotWork) {
    twtest::writeFile(file("bad.cube"), "LUT_3D_SIZE 2\n0 0 0\n");
    runWrong(
        "show bad.cube -o sheet.svg",
        "cannot use 'bad.cube': wrong number of values: 1 lines of numbers, where LUT_3D_SIZE 2 "
        "needs 8");
    writeNegative("good.cube");
    runWrong("show good.cube -o missing/sheet.svg",
             "cannot write 'missing/sheet.svg': No such file or directory");
}

TEST_F(ShowCommand, drawsLooksOfAnyKind) {
    writeCurve("flat.cube", [](float) { return 0.5f; });
    writeCurve("clips.cube", [](float in) { return std::clamp(in * 3.0f - 1.0f, 0.0f, 1.0f); });
    writeCurve("far.cube", [](float in) { return in * 1000.0f - 500.0f; });
    twtest::writeFile(file(std::string(150, 'w') + ".cube"),
                      looks::writeCube(twtest::scatteredLut(9, 3)));
    for (const std::string& look :
         {std::string("flat"), std::string("clips"), std::string("far"), std::string(150, 'w')}) {
        EXPECT_EQ(count(sheet(look + ".cube"), " nan"), 0u) << look;
    }
}

}  // namespace
}  // namespace program_test
