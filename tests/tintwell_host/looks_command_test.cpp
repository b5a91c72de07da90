// What `tintwell-host looks` finds, and where.
#include <nlohmann/json.hpp>

#include "tests/tintwell_host/packing.h"
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

using Json = nlohmann::json;

class LooksCommand : public Program {
protected:
    void write(const std::string& name, const std::string& bytes) const {
        twtest::writeFile(file(name), bytes);
    }
    Json json(const std::string& files) { return Json::parse(runWell("looks --json " + files)); }
};

TEST_F(LooksCommand, findsLooksInAnAfterEffectsProject_withOddChunks) {
    const std::string dusk = lookText(1, 42, "Dusk");
    const std::string dawn = lookText(2, 0, "Dawn", 2);
    write("a.aep", afterEffectsProject({wide(dusk), wide(dawn) + "x", dusk, wide("TWLUT0")}));
    const Json found = json("a.aep");
    ASSERT_EQ(found["looks"].size(), 3u) << found;
    EXPECT_EQ(found["looks"][0]["name"], "Dusk");
    EXPECT_EQ(found["looks"][0]["match"], 42);
    EXPECT_EQ(found["looks"][0]["points"], 3);
    EXPECT_EQ(found["looks"][0]["times"], 2);
    EXPECT_EQ(found["looks"][0]["places"][0]["coding"], "16-bit");
    EXPECT_EQ(found["looks"][0]["places"][1]["coding"], "8-bit");
    EXPECT_EQ(found["looks"][1]["name"], "Dawn");
    EXPECT_EQ(found["looks"][2]["kind"], "none");
    const std::uint64_t at = found["looks"][0]["places"][0]["offset"];
    EXPECT_EQ(twtest::readFile(file("a.aep")).find(wide(dusk)), at);
    EXPECT_TRUE(found["unreadable"].empty());
}

TEST_F(LooksCommand, findsLooksInAPremiereProject_withItsNames) {
    const std::string dusk = lookText(1, 42, "Dusk");
    write("a.prproj", gzip(premiereProject({wide(dusk), wide(lookText(2, 7, "Dawn")), dusk})));
    const Json found = json("a.prproj");
    ASSERT_EQ(found["looks"].size(), 2u) << found;
    EXPECT_EQ(found["looks"][0]["times"], 3);
    const Json place = found["looks"][0]["places"][0];
    EXPECT_EQ(place["file"], "a.prproj");
    EXPECT_EQ(place["coding"], "16-bit, base64");
    EXPECT_EQ(place["path"], "/PremiereData/ArbVideoComponentParam/StartKeyframeValue");
    EXPECT_EQ(place["clip"], "A001 & B.mov");
    EXPECT_EQ(place["effect"], "Tintwell");
    EXPECT_EQ(found["looks"][1]["places"][0]["path"],
              "/PremiereData/ArbVideoComponentParam/Keyframes");
}

TEST_F(LooksCommand, findsLooks_whateverTheMarkupIsLike) {
    const std::string value = base64(wide(lookText(1, 42, "Dusk")));
    write("broken", "<a><b>" + value + "</c>" + value + "<<<" + value);
    write("plain.xml", "\xEF\xBB\xBF<p value='" + value + "'/>");
    const Json found = json("broken plain.xml");
    ASSERT_EQ(found["looks"].size(), 1u);
    EXPECT_EQ(found["looks"][0]["times"], 4);
    EXPECT_EQ(found["looks"][0]["places"][0]["path"], "/a/b");
    EXPECT_FALSE(found["looks"][0]["places"][2].contains("path"));
}

TEST_F(LooksCommand, tellsTheirPlaceInLongMarkup) {
    write("long.xml",
          "<a>" + std::string(3 << 20, 'x') + "<b>" + base64(lookText(1, 42, "Dusk")) + "</b></a>");
    EXPECT_EQ(json("long.xml")["looks"][0]["places"][0]["path"], "/a/b");
}

TEST_F(LooksCommand, looksIntoPackedFilesInOneAnother) {
    const std::string project = afterEffectsProject({wide(lookText(1, 42, "Dusk"))});
    write("all.zip", zip({{"one.aep", project},
                          {"deep/two.zip", zip({{"three.prproj", gzip(project)}})},
                          {"readme.txt", "nothing"}}));
    const Json found = json("all.zip");
    ASSERT_EQ(found["looks"].size(), 1u) << found;
    EXPECT_EQ(found["looks"][0]["places"][0]["file"], "all.zip/one.aep");
    EXPECT_EQ(found["looks"][0]["places"][1]["file"], "all.zip/deep/two.zip/three.prproj");
    EXPECT_TRUE(found["warnings"].empty());
}

TEST_F(LooksCommand, stopsFourDeep_andSaysSo) {
    std::string bytes = lookText(1, 42, "Dusk");
    for (int depth = 0; depth < 4; ++depth)
        bytes = zip({{"x", bytes}});
    write("four", bytes);
    write("five", zip({{"x", bytes}}));
    EXPECT_EQ(json("four")["looks"].size(), 1u);
    EXPECT_EQ(json("five")["looks"].size(), 0u);
    EXPECT_EQ(json("five")["warnings"][0],
              "'five/x/x/x/x' lies too deep in packed files to be looked into");
}

TEST_F(LooksCommand, tellsWhereAPackedFileWasCutOff_andKeepsWhatItFound) {
    std::string noise;
    twtest::Random random(1);
    while (noise.size() < 300000)
        noise += static_cast<char>(random.next());
    const std::string bytes = gzip(lookText(1, 42, "Dusk") + std::string(1, '\0') + noise);
    write("cut.prproj", bytes.substr(0, bytes.size() / 2));
    const Outcome outcome = run("looks cut.prproj");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.out.find("Dusk"), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.err.substr(0, 55), "tintwell-host: 'cut.prproj' cannot be read further: tru")
        << outcome.err;
}

TEST_F(LooksCommand, printsATable) {
    const std::string data = "2 -0.5 1.5 " + std::string(61, 'A') + "P//";
    write("a.bin", "TWLUT3 42 Dusk " + data + " TWLUT1 " + data + " TWLUTP 17 TWLUT0 " +
                       "TWLUT1 130 0 1 AAAA<" + std::string("TWLUT0 TWLUT0 TWLUT0"));
    EXPECT_EQ(runWell("looks a.bin"),
              "name                   match  points  values     times  where\n"
              "Dusk                   42     2       -0.5..1.5  1      a.bin, at byte 0\n"
              "(no name)              -      2       -0.5..1.5  1      a.bin, at byte 91\n"
              "(calibration pattern)  -      17      -          1      a.bin, at byte 174\n"
              "(no look)              -      -       -          4      a.bin, at byte 184\n"
              "                                                        a.bin, at byte 211\n"
              "                                                        a.bin, at byte 218\n"
              "                                                        and 1 more\n"
              "\nunreadable, 1 text: LUT size out of range\n"
              "   a.bin, at byte 191\n");
}

TEST_F(LooksCommand, listsEachLookOnce_ofAThousand) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += wide(lookText(static_cast<std::uint64_t>(i % 3), 5, "Dusk", 9)) + "....";
    write("a.aep", bytes);
    const Json found = json("a.aep --extract out");
    ASSERT_EQ(found["looks"].size(), 3u);
    EXPECT_EQ(found["looks"][0]["times"], 334);
    EXPECT_EQ(found["looks"][0]["places"].size(), 20u);
    for (const char* name : {"Dusk.cube", "Dusk 2.cube", "Dusk 3.cube", "Dusk 3.twlut"})
        EXPECT_TRUE(exists(std::string("out/") + name)) << name;
    EXPECT_FALSE(exists("out/Dusk 4.cube"));
}

TEST_F(LooksCommand, extractsWhatTheEffectTakesAgain) {
    const std::string text = lookText(1, 42, "Dusk");
    write("a.aep", wide(text) + "..");
    runWell("looks a.aep --extract out");
    EXPECT_EQ(twtest::readFile(file("out/Dusk.twlut")), text + "\n");
    EXPECT_EQ(runWell("encode out/Dusk.cube"), text + "\n");
}

TEST_F(LooksCommand, keepsFilesThatAreThere_andNamesInTheFolder) {
    std::filesystem::create_directory(file("out"));
    write("out/Dusk.twlut", "mine");
    write("a.aep", lookText(1, 42, "Dusk") + "\n" + lookText(2, 1, "../../a:b\x01") + "\n" +
                       lookText(3, 2, "") + "\n" + lookText(4, 3, std::string(390, 'n')));
    runWell("looks a.aep --extract out");
    EXPECT_EQ(twtest::readFile(file("out/Dusk.twlut")), "mine");
    for (const std::string& name : {std::string("Dusk 2"), std::string("_._.._a_b_"),
                                    std::string("look"), std::string(100, 'n')}) {
        EXPECT_TRUE(exists("out/" + name + ".cube")) << name;
    }
    EXPECT_EQ(files(), (std::vector<std::string>{"a.aep", "out"}));
}

TEST_F(LooksCommand, saysWhenThereIsNothing) {
    write("empty", "");
    EXPECT_EQ(runWell("looks empty"), "no looks\n");
}

TEST_F(LooksCommand, readsStandardInput) {
    write("a.aep", lookText(1, 42, "Dusk"));
    EXPECT_NE(runWell("looks - <a.aep").find("Dusk"), std::string::npos);
}

TEST_F(LooksCommand, refusesWhatIsNoFile) {
    runWrong("looks missing", "cannot read 'missing': No such file or directory");
    runWrong("looks .", "cannot read '.': it is a folder");
    write("file", "x");
    write("a.aep", lookText(1, 42, "Dusk"));
    runWrong("looks a.aep --extract file/out",
             "cannot make the folder 'file/out': Not a directory");
}

TEST_F(LooksCommand, listsTheOthers_whenFilesCannotBeRead) {
    write("a.aep", lookText(1, 42, "Dusk"));
    write("b.aep", lookText(2, 43, "Dawn"));
    const Outcome outcome = run("looks a.aep missing . b.aep --json --extract out");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err,
              "tintwell-host: cannot read 'missing': No such file or directory\n"
              "tintwell-host: cannot read '.': it is a folder\n"
              "tintwell-host: 2 of 4 files could not be read\n");
    EXPECT_EQ(Json::parse(outcome.out)["looks"].size(), 2u);
    EXPECT_TRUE(exists("out/Dawn.cube"));
}

TEST_F(LooksCommand, isWorthAnotherTry_whenAFileIsLost) {
    runWrong("looks /proc/self/mem", "cannot read '/proc/self/mem': Input/output error", "", 75);
    EXPECT_EQ(run("looks missing /proc/self/mem").exitCode, 75);
    EXPECT_EQ(run("looks /proc/self/mem missing").exitCode, 75);
}

TEST_F(LooksCommand, goesNoFurther_whenALookCannotBeWritten) {
    write("a.aep", lookText(1, 42, "Dusk"));
    write("b.aep", lookText(2, 43, "Dawn"));
    runWrong("looks a.aep b.aep --extract out",
             "cannot write 'out/Dusk.cube': No space left on device",
             "mkdir out; ln -s /dev/full out/.partial-$(uname -n)-$$-0; exec", 75);
}

TEST_F(LooksCommand, printsNothingThatATerminalObeys) {
    write("a.aep", lookText(1, 42, "\x1b[31mDusk\n"));
    EXPECT_NE(runWell("looks a.aep").find("?[31mDusk?"), std::string::npos);
}

}  // namespace
}  // namespace program_test
