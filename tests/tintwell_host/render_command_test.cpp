// `tintwell-host render` on real files.
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

class RenderCommand : public Program {
protected:
    void SetUp() override {
        writeInput("in.png");
        writeNegative("negative.cube");
    }
};

TEST_F(RenderCommand, gradesWithACubeFile_inPremierePro) {
    runWell("render in.png out.png --lut negative.cube");
    EXPECT_EQ(bytes("out.png"), negative(bytes("in.png")));
}

TEST_F(RenderCommand, givesTheSameBytes_inAfterEffects) {
    runWell("render in.png out.png --lut negative.cube --host ae");
    EXPECT_EQ(bytes("out.png"), negative(bytes("in.png")));
}

TEST_F(RenderCommand, copiesThePicture_withoutALook) {
    runWell("render in.png out.png");
    EXPECT_EQ(bytes("out.png"), bytes("in.png"));
}

TEST_F(RenderCommand, blendsByAmount) {
    runWell("render in.png out.exr --lut negative.cube --amount 50 --depth float");
    for (std::size_t i = 0; const float value : floats("out.exr")) {
        if (i++ % 4 != 3) {
            ASSERT_NEAR(value, 0.5f, 1e-6f) << "sample " << i - 1;
        }
    }
}

TEST_F(RenderCommand, gradesWithTwlutText) {
    twtest::writeFile(file("negative.twlut"), runWell("encode negative.cube"));
    runWell("render in.png out.png --text negative.twlut");
    EXPECT_EQ(bytes("out.png"), negative(bytes("in.png")));
}

TEST_F(RenderCommand, gradesFromAProject_withoutTheCubeFile) {
    runWell(
        "render in.png half.exr --lut negative.cube --amount 50 --depth float --save a.project");
    std::filesystem::remove(file("negative.cube"));
    runWell("render in.png again.exr --project a.project --depth float");
    EXPECT_EQ(floats("again.exr"), floats("half.exr"));
    runWell("render in.png full.png --project a.project --amount 100");
    EXPECT_EQ(bytes("full.png"), negative(bytes("in.png")));
}

TEST_F(RenderCommand, keepsFloatsAndAlpha_fromExrToExr) {
    program::Picture picture;
    picture.width = picture.height = 1;
    picture.depth = program::Depth::kFloat;
    picture.hasAlpha = true;
    picture.floats = {0.25f, -0.5f, 3.0f, 0.125f};
    program::writePicture(file("in.exr"), picture);
    runWell("render in.exr out.exr --lut negative.cube");
    EXPECT_EQ(floats("out.exr"), (std::vector<float>{0.75f, 1.0f, 0.0f, 0.125f}));
}

TEST_F(RenderCommand, writesTiffAndJpegToo) {
    runWell("render in.png out.tif --lut negative.cube");
    EXPECT_EQ(bytes("out.tif"), negative(bytes("in.png")));
    runWell("render in.png out.jpg --lut negative.cube");
    EXPECT_EQ(bytes("out.jpg").size(), bytes("in.png").size());
}

TEST_F(RenderCommand, overwritesItsOwnInput) {
    const std::vector<std::uint8_t> before = bytes("in.png");
    runWell("render in.png in.png --lut negative.cube");
    EXPECT_EQ(bytes("in.png"), negative(before));
}

TEST_F(RenderCommand, gradesASequence_splitAnywhere) {
    for (const char* name : {"s.0001.png", "s.0002.png", "s.0003.png"})
        writeInput(name);
    runWell("render s.%04d.png all.%04d.png --lut negative.cube");
    runWell("render s.%04d.png split.%04d.png --lut negative.cube --frames 1-2");
    runWell("render s.%04d.png split.%04d.png --lut negative.cube --frames 3");
    for (const char* number : {"0001", "0002", "0003"}) {
        EXPECT_EQ(bytes(std::string("all.") + number + ".png"), negative(bytes("in.png")));
        EXPECT_EQ(twtest::readFile(file(std::string("split.") + number + ".png")),
                  twtest::readFile(file(std::string("all.") + number + ".png")));
    }
}

TEST_F(RenderCommand, refusesFloat_inAfterEffects) {
    runWrong("render in.png out.png --host ae --depth float",
             "After Effects gives this effect 8 bits a channel: use --depth 8, or --host premiere "
             "for float",
             "", 2);
    EXPECT_FALSE(exists("out.png"));
}

TEST_F(RenderCommand, namesALookThatCannotBeUsed) {
    twtest::writeFile(file("wide.cube"),
                      "DOMAIN_MAX 2 2 2\n" + twtest::readFile(file("negative.cube")));
    twtest::writeFile(file("line.cube"), "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n");
    twtest::writeFile(file("empty.cube"), "");
    twtest::writeFile(file("bad.twlut"), "TWLUT3 nonsense");
    runWrong("render in.png out.png --lut none.cube",
             "cannot read 'none.cube': No such file or directory");
    runWrong("render in.png out.png --lut .", "cannot read '.': it is a folder");
    runWrong("render in.png out.png --lut empty.cube",
             "cannot use 'empty.cube': the file is empty");
    runWrong("render in.png out.png --lut wide.cube",
             "cannot use 'wide.cube': its domain is other than 0..1");
    runWrong("render in.png out.png --lut line.cube",
             "cannot use 'line.cube': 1D LUTs are not supported");
    runWrong("render in.png out.png --text bad.twlut",
             "cannot use 'bad.twlut': not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> "
             "<hi> <data>)");
    EXPECT_FALSE(exists("out.png"));
}

TEST_F(RenderCommand, refusesALutThatTheTextCannotHold) {
    std::string cube = "LUT_3D_SIZE 130\n";
    for (int i = 0; i < 130 * 130 * 130; ++i)
        cube += "0 0 0\n";
    twtest::writeFile(file("large.cube"), cube);
    runWrong("render in.png out.png --lut large.cube",
             "cannot use 'large.cube': LUT size out of range");
}

TEST_F(RenderCommand, leavesNothing_whenTheOutputCannotBeWritten) {
    const std::vector<std::string> before = files();
    EXPECT_EQ(run("render in.png nowhere/out.png").exitCode, 1);
    EXPECT_EQ(run("render in.png out.nothing").exitCode, 1);
    std::vector<std::string> after = files();
    std::erase(after, ".local");  // the simulated home
    EXPECT_EQ(after, before);
}

TEST_F(RenderCommand, keepsTheOldOutput_whenTheInputIsDamaged) {
    const std::string whole = twtest::readFile(file("in.png"));
    twtest::writeFile(file("cut.png"), whole.substr(0, whole.size() / 2));
    twtest::writeFile(file("out.png"), "old");
    const Outcome outcome = run("render cut.png out.png");
    EXPECT_EQ(outcome.exitCode, 1);
    // The PNG library prints a message of its own as well.
    EXPECT_NE(
        outcome.err.find("tintwell-host: cannot read 'cut.png': Read error: hit end of file\n"),
        std::string::npos)
        << outcome.err;
    EXPECT_EQ(twtest::readFile(file("out.png")), "old");
}

TEST_F(RenderCommand, saysWhy_whenAPictureWasCut) {
    for (const std::string name : {"cut.png", "cut.tif", "cut.exr", "cut.dpx", "cut.jpg"}) {
        runWell("render in.png " + name);
        std::filesystem::resize_file(file(name), std::filesystem::file_size(file(name)) * 3 / 4);
        const Outcome outcome = run("render " + name + " out.png");
        EXPECT_EQ(outcome.exitCode, 1) << name;
        // The PNG library has a line of its own before ours.
        const std::string head = "tintwell-host: cannot read '" + name + "': ";
        const std::size_t at = outcome.err.find(head);
        ASSERT_NE(at, std::string::npos) << outcome.err;
        EXPECT_GT(outcome.err.size(), at + head.size() + 1) << outcome.err;
        EXPECT_FALSE(exists("out.png")) << name;
    }
}

// As telephones append films.
TEST_F(RenderCommand, takesAJpegWithSomethingBehindIt) {
    runWell("render in.png whole.jpg");
    const std::string whole = twtest::readFile(file("whole.jpg"));
    twtest::writeFile(file("more.jpg"), whole + "film \xFF\xDA and more");
    runWell("render more.jpg more.png");
    runWell("render whole.jpg whole.png");
    EXPECT_EQ(bytes("more.png"), bytes("whole.png"));
}

TEST_F(RenderCommand, refusesWhatIsNoSequence) {
    runWrong("render in.png out.%04d.png",
             "'in.png' and 'out.%04d.png' must both name a sequence (with %04d, say) or both one "
             "file",
             "", 2);
    runWrong("render in.png out.png --frames 1-2",
             "--frames needs sequences, and 'in.png' is one file", "", 2);
    runWrong("render s.%04d.png o.%04d.png", "no file matches 's.%04d.png'");
    runWrong("render s.%04d.png o.%04d.png --frames 1-2", "no file matches 's.%04d.png'");
}

TEST_F(RenderCommand, refusesOptionsOfClips_forPictures) {
    runWrong("render in.png out.png --codec ffv1", "--codec is for clips that are written", "", 2);
    runWrong("render in.png out.png --rate 25", "--rate is for clips that are made of a sequence",
             "", 2);
    runWrong("render in.png out.png --no-audio", "--no-audio is for clips that are made of a clip",
             "", 2);
    runWrong("render s.%04d.png o.%04d.png --strict", "--strict is for clips that are read", "", 2);
}

TEST_F(RenderCommand, refusesADamagedProject) {
    runWell("render in.png out.png --lut negative.cube --save a.project");
    const std::string whole = twtest::readFile(file("a.project"));
    twtest::writeFile(file("cut.project"), whole.substr(0, whole.size() / 2));
    const Outcome outcome = run("render in.png again.png --project cut.project");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_NE(outcome.err.find("cut.project"), std::string::npos) << outcome.err;
    EXPECT_FALSE(exists("again.png"));
}

TEST_F(RenderCommand, refusesTwoLooksAndAmountsOutOfRange) {
    EXPECT_EQ(run("render in.png out.png --lut a.cube --text b.twlut").exitCode, 2);
    EXPECT_EQ(run("render in.png out.png --amount 101").exitCode, 2);
    EXPECT_EQ(run("render in.png").exitCode, 2);
    EXPECT_FALSE(exists("out.png"));
}

}  // namespace
}  // namespace program_test
