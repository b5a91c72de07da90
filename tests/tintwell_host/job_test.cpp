// Sequences as a render farm hands them out: sets, restarts, reports, exit codes and signals.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

using Json = nlohmann::json;

class Job : public Program {
protected:
    void SetUp() override {
        for (int frame = 1; frame <= 4; ++frame)
            writeInput(name("s", frame), 7, 4 + frame);
        writeNegative("negative.cube");
    }

    static std::string name(const std::string& sequence, int frame,
                            const std::string& extension = "png") {
        return sequence + ".000" + std::to_string(frame) + "." + extension;
    }

    std::string contents(const std::string& nameOfFile) const {
        return twtest::readFile(file(nameOfFile));
    }

    // What each frame of a job with --progress lines became, in the order of the frames.
    std::string states(const std::string& arguments) {
        std::map<int, std::string> found;
        std::istringstream lines(run("render " + arguments + " --progress lines").out);
        for (std::string line; std::getline(lines, line);) {
            const Json json = Json::parse(line);
            EXPECT_EQ(json["total"], 4) << line;
            found[json["frame"]] = json["state"].get<std::string>().substr(0, 1);
        }
        std::string all;
        for (const auto& [frame, state] : found)
            all += state;
        return all;
    }
};

TEST_F(Job, takesEveryMark) {
    for (const std::string mark : {"%04d", "####", "@@@@", "'$F4'"}) {
        runWell("render s." + mark + ".png o.####.png --lut negative.cube --frames 2");
        EXPECT_EQ(bytes("o.0002.png"), negative(bytes("s.0002.png"))) << mark;
        std::filesystem::remove(file("o.0002.png"));
    }
}

TEST_F(Job, takesAnInputThatExists_forOnePicture) {
    writeInput("shot#1.png");
    runWell("render shot#1.png out.png --lut negative.cube");
    EXPECT_EQ(bytes("out.png"), negative(bytes("shot#1.png")));
}

TEST_F(Job, rendersFramesBelowZero) {
    writeInput("n.-001.png");
    writeInput("n.0000.png");
    runWell("render n.%04d.png o.%04d.png --frames -1-0");
    EXPECT_TRUE(exists("o.-001.png"));
    EXPECT_TRUE(exists("o.0000.png"));
}

TEST_F(Job, saysWhatItCuts_pastTheEnd) {
    const Outcome outcome = run("render s.%04d.png o.%04d.png --frames 4-6");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err,
              "tintwell-host: 2 of the frames asked for lie past frame 4, the end of the job, and "
              "are left out\n");
    EXPECT_TRUE(exists("o.0004.png"));
}

TEST_F(Job, goesOnAfterAFrameThatCannotBeRead) {
    std::filesystem::remove(file("s.0002.png"));
    const Outcome outcome = run("render s.%04d.png o.%04d.png --frames 1-4");
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err,
              "tintwell-host: cannot read 's.0002.png': No such file or directory\n"
              "tintwell-host: 1 of 4 frames could not be rendered\n");
    for (const int frame : {1, 3, 4})
        EXPECT_TRUE(exists(name("o", frame))) << frame;
}

// ---- The same bytes

TEST_F(Job, writesTheSameBytes_wheneverAndHoweverManyAtOnce) {
    for (const std::string extension : {"png", "jpg", "tif", "exr", "dpx"}) {
        const std::string out = ".%04d." + extension + " --lut negative.cube --depth float";
        runWell("render s.%04d.png a" + out + " --threads 1");
        runWell("render s.%04d.png b" + out + " --threads 4", "sleep 1.1;");
        runWell("render s.0003.png c.0003." + extension + " --lut negative.cube --depth float");
        for (int frame = 1; frame <= 4; ++frame) {
            EXPECT_TRUE(contents(name("a", frame, extension)) ==
                        contents(name("b", frame, extension)))
                << extension << " " << frame;
        }
        EXPECT_TRUE(contents(name("a", 3, extension)) == contents(name("c", 3, extension)))
            << extension;
    }
}

TEST_F(Job, packsAsAsked) {
    const std::string job = "render s.0001.png ";
    runWell(job + "small.exr --compression zip && " TINTWELL_HOST " " + job +
            "large.exr --compression none");
    EXPECT_LT(contents("small.exr").size(), contents("large.exr").size());
    runWrong(job + "o.png --compression zip",
             "'zip' is no compression for 'o.png': PNG takes a level, 0 to 9", "", 2);
    runWrong(job + "o.jpg --compression 101",
             "'101' is no compression for 'o.jpg': JPEG takes a quality, 1 to 100", "", 2);
    runWrong(job + "o.exr --compression lzw",
             "'lzw' is no compression for 'o.exr': EXR takes none, rle, zips, zip, piz, pxr24, "
             "b44, b44a, dwaa or dwab",
             "", 2);
    runWrong(job + "o.tif --compression 5",
             "'5' is no compression for 'o.tif': TIFF takes none, lzw, zip or packbits", "", 2);
    runWrong(job + "o.dpx --compression 1",
             "'1' is no compression for 'o.dpx': this format has none to choose", "", 2);
}

// ---- Restart

class Restart : public Job, public testing::WithParamInterface<const char*> {
protected:
    const std::string extension_ = GetParam();
    const std::string job_ = "s.%04d.png o.%04d." + extension_ + " --skip-existing ";
    const std::string look_ = "--lut negative.cube";
};

TEST_P(Restart, skipsWhatIsWhole_andMakesAnewWhatIsNot) {
    EXPECT_EQ(states(job_ + look_), "rrrr");
    EXPECT_EQ(states(job_ + look_), "ssss");
    std::filesystem::remove(file(name("o", 2, extension_)));
    const std::string whole = contents(name("o", 3, extension_));
    twtest::writeFile(file(name("o", 3, extension_)), whole.substr(0, whole.size() - 30));
    EXPECT_EQ(states(job_ + look_), "srrs");
    EXPECT_EQ(states(job_ + look_), "ssss");
}

TEST_P(Restart, makesAnew_whatWasMadeFromSomethingElse) {
    EXPECT_EQ(states(job_ + look_), "rrrr");
    EXPECT_EQ(states(job_ + look_ + " --amount 50"), "rrrr") << "another amount";
    EXPECT_EQ(states(job_), "rrrr") << "another look";
    writeInput("s.0004.png", 3, 3);
    EXPECT_EQ(states(job_), "sssr") << "one has another input";
}

INSTANTIATE_TEST_SUITE_P(Formats, Restart, testing::Values("png", "jpg", "tif", "exr", "dpx"),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(Job, saysWhichFramesAreStale) {
    runWell("render s.%04d.png o.%04d.png --lut negative.cube --frames 1-2");
    twtest::writeFile(file("o.0002.png"), "half");
    EXPECT_EQ(run("render s.%04d.png o.%04d.png --frames 1 --skip-existing").err,
              "tintwell-host: 'o.0001.png' was made from something else and is made anew\n");
    EXPECT_EQ(run("render s.%04d.png o.%04d.png --frames 2 --skip-existing").err,
              "tintwell-host: 'o.0002.png' is not whole and is made anew\n");
}

TEST_F(Job, removesWhatKilledRunsHaveLeft) {
    const std::string host = [] {
        char text[64];
        gethostname(text, sizeof text);
        return std::string(text);
    }();
    const std::string dead = ".partial-" + host + "-999999999-0";
    const std::string living = ".partial-" + host + "-999999999-1";
    const std::string elsewhere = ".partial-another-machine-999999999-0";
    const std::string neighbour = ".partial-" + host + "-2-999999999-0";
    for (const std::string& each : {dead, living, elsewhere, neighbour})
        twtest::writeFile(file(each), "half");
    const int lock = ::open(file(living).c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    runWell("render s.%04d.png o.%04d.png");
    ::close(lock);
    EXPECT_FALSE(exists(dead));
    EXPECT_TRUE(exists(living));
    EXPECT_TRUE(exists(elsewhere));
    EXPECT_TRUE(exists(neighbour)) << "of a machine whose name goes on where this one's ends";
}

// ---- Reports and exit codes

TEST_F(Job, reportsWhatBecameOfEachFrame) {
    runWell("render s.%04d.png o.%04d.png --frames 1");
    std::filesystem::remove(file("s.0003.png"));
    EXPECT_EQ(run("render s.%04d.png o.%04d.png --frames 1-4 --skip-existing --report job.json "
                  "--threads 1")
                  .exitCode,
              1);
    const Json report = Json::parse(contents("job.json"));
    EXPECT_EQ(report["frames"], 4);
    EXPECT_EQ(report["rendered"], 2);
    EXPECT_EQ(report["skipped"], 1);
    EXPECT_EQ(report["failed"], 1);
    EXPECT_EQ(report["not begun"], 0);
    EXPECT_EQ(report["exit"], 1);
    EXPECT_EQ(report["reason"], "1 of 4 frames could not be rendered");
    EXPECT_EQ(report["results"][2]["file"], "o.0003.png");
    EXPECT_EQ(report["results"][2]["reason"],
              "cannot read 's.0003.png': No such file or directory");
    EXPECT_GT(report["results"][1]["seconds"], 0.0);
}

TEST_F(Job, endsWith2_forWrongUsage) {
    for (const char* arguments :
         {"render s.0001.png", "render s.%04d.png o.png", "render s.%04d.png o.%04d.png --frames x",
          "render s.%04d.png o.%04d.png --progress loud", "render s.0001.png o.png --threads 0",
          "render s.0001.png o.png --gpu --host ae", "nothing", ""}) {
        EXPECT_EQ(run(arguments).exitCode, 2) << arguments;
    }
}

TEST_F(Job, endsWith75_whenTheDiskIsFull_andBeginsNoFurtherFrame) {
    const Outcome outcome =
        run("render s.%04d.png o.%04d.png --threads 1 --report job.json", kFullDisk);
    EXPECT_EQ(outcome.exitCode, 75);
    EXPECT_EQ(outcome.err,
              "tintwell-host: cannot write 'o.0001.png': No space left on device\n"
              "tintwell-host: 1 of 4 frames could not be rendered\n");
    const Json report = Json::parse(contents("job.json"));
    EXPECT_EQ(report["exit"], 75);
    EXPECT_GE(report["not begun"], 2);
    EXPECT_FALSE(exists("o.0001.png"));
}

// A file server that went away answers every read so.
TEST_F(Job, endsWith75_whenTheInputCannotBeReadJustNow) {
    runWrong("render /proc/self/mem o.png", "cannot read '/proc/self/mem': Input/output error", "",
             75);
}

TEST_F(Job, endsWith75_whenTheLookCannotBeReadJustNow) {
    runWrong("render s.0001.png o.png --lut /proc/self/mem",
             "cannot read '/proc/self/mem': Input/output error", "", 75);
}

}  // namespace
}  // namespace program_test
