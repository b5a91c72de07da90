// What `tintwell-host check` says; the verdicts themselves are tested in tests/looks.
#include <nlohmann/json.hpp>

#include "tests/tintwell_host/packing.h"
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

using Json = nlohmann::json;
using CheckCommand = Program;

TEST_F(CheckCommand, tellsThatALookWorks_andWhatToKnow) {
    writeNegative("negative.cube");
    EXPECT_EQ(runWell("check negative.cube"),
              "negative.cube: works\n"
              "        \"negative\", 2 points an axis, values 0 to 1; the text keeps them within 0 "
              "steps of 8 bits, 0 on average\n"
              "  note  red falls by 255 steps of 8 bits while grey rises, lowest at grey 1\n"
              "        Gradients can show bands or turn over there.\n"
              "  note  green falls by 255 steps of 8 bits while grey rises, lowest at grey 1\n"
              "        Gradients can show bands or turn over there.\n"
              "  note  blue falls by 255 steps of 8 bits while grey rises, lowest at grey 1\n"
              "        Gradients can show bands or turn over there.\n"
              "  note  black becomes 1 1 1\n"
              "  note  white becomes 0 0 0\n");
}

TEST_F(CheckCommand, endsWith1_whenALookWouldNotWork) {
    writeNegative("good.cube");
    twtest::writeFile(file("bad.CUBE"), "LUT_3D_SIZE 2\n0 0 0\n");
    runWrong("check bad.CUBE", "the look would not work");
    runWrong("check good.cube bad.CUBE", "1 of 2 looks would not work");
    EXPECT_EQ(run("check bad.CUBE").out,
              "bad.CUBE: would not work\n"
              "  fatal wrong number of values: 1 lines of numbers, where LUT_3D_SIZE 2 needs 8\n"
              "        The file was cut off or edited; export it again.\n");
}

TEST_F(CheckCommand, judgesTheOthers_whenFilesCannotBeRead) {
    writeNegative("good.cube");
    twtest::writeFile(file("bad.cube"), "LUT_3D_SIZE 2\n0 0 0\n");
    const Outcome outcome = run("check missing good.cube --json");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err,
              "tintwell-host: cannot read 'missing': No such file or directory\n"
              "tintwell-host: 1 of 2 files could not be read\n");
    EXPECT_EQ(Json::parse(outcome.out).size(), 1u);
    EXPECT_EQ(run("check missing bad.cube good.cube").err,
              "tintwell-host: cannot read 'missing': No such file or directory\n"
              "tintwell-host: 1 of 2 looks would not work, and 1 of 3 files could not be read\n");
    EXPECT_EQ(run("check bad.cube /proc/self/mem").exitCode, 75);
}

TEST_F(CheckCommand, printsJsonForTools) {
    writeNegative("negative.cube");
    const Json all = Json::parse(runWell("check --json negative.cube"));
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0]["works"], true);
    EXPECT_EQ(all[0]["name"], "negative");
    EXPECT_EQ(all[0]["size"], 2);
    EXPECT_EQ(all[0]["facts"]["black"], (Json{1.0, 1.0, 1.0}));
    EXPECT_EQ(all[0]["precision"]["largest"], 0.0);
    EXPECT_EQ(all[0]["findings"][0]["id"], "not-monotonic");
    EXPECT_EQ(all[0]["findings"][0]["weight"], "note");
}

TEST_F(CheckCommand, takesTextsAndProjects) {
    twtest::writeFile(file("text"), lookText(1, 42, "Dusk") + "\n");
    twtest::writeFile(file("wide"), wide(lookText(1, 42, "Dusk")));
    EXPECT_EQ(runWell("check text").substr(0, 12), "text: works\n");
    EXPECT_EQ(runWell("check wide").substr(0, 12), "wide: works\n");
    twtest::writeFile(file("a.aep"), afterEffectsProject({wide(lookText(1, 42, "Dusk")),
                                                          wide(lookText(2, 42, "Dawn"))}));
    const std::string told = runWell("check a.aep");
    EXPECT_NE(told.find("a.aep, \"Dusk\": works\n"), std::string::npos) << told;
    EXPECT_NE(told.find("\n\na.aep, \"Dawn\": works\n"), std::string::npos) << told;
}

TEST_F(CheckCommand, takesProjectsOfTheSimulatedHost) {
    writeInput("in.png");
    writeNegative("negative.cube");
    runWell("render in.png out.png --lut negative.cube --save a.project");
    EXPECT_EQ(runWell("check a.project").substr(0, 29), "a.project, \"negative\": works\n");
}

TEST_F(CheckCommand, tellsUnreadableTexts_ofAProject) {
    twtest::writeFile(file("a.aep"), "xTWLUT1 2 0 1 AAAA");
    EXPECT_EQ(run("check a.aep").out,
              "a.aep: would not work\n"
              "  fatal LUT data is truncated (1 text)\n"
              "        Apply the look again.\n");
}

TEST_F(CheckCommand, tellsThatAProjectHoldsNoLook) {
    twtest::writeFile(file("a.aep"), "xTWLUT0");
    EXPECT_NE(run("check a.aep").out.find("the text says that there is no look"),
              std::string::npos);
}

TEST_F(CheckCommand, takesAnythingElseForACubeFile) {
    writeNegative("look.txt");
    EXPECT_EQ(runWell("check look.txt").substr(0, 16), "look.txt: works\n");
    EXPECT_EQ(runWell("check - <look.txt").substr(0, 9), "-: works\n");
    runWrong("check missing", "cannot read 'missing': No such file or directory");
}

}  // namespace
}  // namespace program_test
