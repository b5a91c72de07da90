// tintwell-host with full disks, missing permissions and special files: one sentence and exit
// status 1, or the right result; never half a file.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>

#include "tests/support/locales.h"
#include "tests/tintwell_host/program_fixture.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TINTWELL_SANITIZED
#endif
#endif

namespace program_test {
namespace {

// For the shell: the file that is written before it gets its name cannot grow.
constexpr char kFullDisk[] = "ln -s /dev/full .partial-$(uname -n)-$$-0; exec";

constexpr char kLog[] = "home/Library/Application Support/Tintwell/effect.log";

class Environment : public Program {
protected:
    void SetUp() override {
        writeInput("in.png");
        writeNegative("negative.cube");
    }

    // The look is applied with these options.
    void expectGraded(const std::string& options, const std::string& look = "negative.cube") {
        std::filesystem::remove(file("out.png"));
        const Outcome outcome = run("render in.png out.png --lut '" + look + "' " + options);
        EXPECT_EQ(outcome.exitCode, 0) << options << "\n" << outcome.err;
        EXPECT_EQ(outcome.err, "") << options;
        EXPECT_EQ(bytes("out.png"), negative(bytes("in.png"))) << options;
    }

    // A home with a folder for the effect's files, and that folder's path.
    std::string makeHome() {
        const std::string folder = file("home/Library/Application Support/Tintwell");
        std::filesystem::create_directories(folder);
        return folder;
    }
};

// ---- The simulated home

TEST_F(Environment, homeIsNamed_whenItCannotBeMade) {
    twtest::writeFile(file("plain"), "");
    std::filesystem::create_symlink("nowhere/below", file("dangling"));
    const std::string render = "render in.png out.png --home ";
    runWrong(render + "plain", "cannot make the home '" + file("plain") + "': Not a directory");
    runWrong(render + "/proc/tintwell",
             "cannot make the home '/proc/tintwell': No such file or directory");
    runWrong(render + "/dev/null", "cannot make the home '/dev/null': Not a directory");
    const std::string longName(256, 'h');
    runWrong(render + longName,
             "cannot make the home '" + file(longName) + "': File name too long");
    EXPECT_EQ(run(render + "dangling").exitCode, 1);
    EXPECT_FALSE(exists("out.png"));
}

TEST_F(Environment, homeMustBeNamed_withoutTheUsersOwn) {
    for (const char* without : {"unset HOME;", "HOME=;"}) {
        runWrong("render in.png out.png", "HOME is not set; name a folder with --home", without);
    }
    EXPECT_EQ(run("render in.png out.png --home home", "unset HOME;").exitCode, 0);
}

TEST_F(Environment, homeMayHaveAnyName) {
    for (const char* name :
         {"' 100%s %n \"q\" '", "\"$(printf 'two\\nlines')\"", "'Jürgen 日本'"}) {
        expectGraded(std::string("--home ") + name);
    }
    EXPECT_TRUE(exists(" 100%s %n \"q\" /Library/Application Support/Tintwell/effect.log"));
    EXPECT_TRUE(exists("two\nlines/Library/Application Support/Tintwell/effect.log"));
    EXPECT_TRUE(exists("Jürgen 日本/Library/Application Support/Tintwell/effect.log"));
}

TEST_F(Environment, rendersWithoutALog_whenThereCanBeNone) {
    const std::string folder = makeHome();
    std::filesystem::create_symlink("/dev/full", folder + "/effect.log");
    expectGraded("--home home");
    std::filesystem::remove(folder + "/effect.log");
    std::filesystem::create_directory(folder + "/effect.log");
    expectGraded("--home home");
    std::filesystem::remove_all(folder);
    twtest::writeFile(folder, "a file");
    expectGraded("--home home");
    EXPECT_EQ(twtest::readFile(folder), "a file");
}

TEST_F(Environment, rendersWithoutALog_whenItIsAFifo) {
    ASSERT_EQ(mkfifo((makeHome() + "/effect.log").c_str(), 0600), 0);
    expectGraded("--home home");
}

TEST_F(Environment, showsNoLog_thatIsAFolder) {
    std::filesystem::create_directory(makeHome() + "/effect.log");
    runWrong("log --home home", "cannot read '" + file(kLog) + "': it is a folder");
}

// ---- A full disk

TEST_F(Environment, oldPictureStays_whenTheDiskIsFull) {
    const std::vector<std::string> before = files();
    for (const std::string name : {"out.png", "out.jpg", "out.tif", "out.exr"}) {
        SCOPED_TRACE(name);
        twtest::writeFile(file(name), "old");
        runWrong("render in.png " + name + " --home .home",
                 "cannot write '" + name + "': No space left on device", kFullDisk, 75);
        EXPECT_TRUE(twtest::readFile(file(name)) == "old");
        std::filesystem::remove(file(name));
    }
    std::filesystem::remove_all(file(".home"));
    EXPECT_EQ(files(), before);
}

TEST_F(Environment, oldCubeStays_whenTheDiskIsFull) {
    twtest::writeFile(file("negative.twlut"), runWell("encode negative.cube"));
    twtest::writeFile(file("out.cube"), "old");
    const std::vector<std::string> before = files();
    runWrong("decode negative.twlut out.cube", "cannot write 'out.cube': No space left on device",
             kFullDisk, 75);
    EXPECT_EQ(twtest::readFile(file("out.cube")), "old");
    EXPECT_EQ(files(), before);
}

TEST_F(Environment, oldProjectStays_whenTheDiskIsFull) {
    twtest::writeFile(file("a.project"), "old");
    runWrong("render in.png out.png --save a.project",
             "cannot write 'a.project': No space left on device",
             "ln -s /dev/full .partial-$(uname -n)-$$-1; exec", 75);
    EXPECT_EQ(twtest::readFile(file("a.project")), "old");
}

// Those of other tasks have the same name.
TEST_F(Environment, savesAProject_withoutAFileOfAFixedName) {
    twtest::writeFile(file("a.project.tmp"), "another's");
    runWell("render in.png out.png --save a.project");
    EXPECT_EQ(twtest::readFile(file("a.project.tmp")), "another's");
    EXPECT_TRUE(exists("a.project"));
}

TEST_F(Environment, losesNoOutput_withoutSayingSo) {
    for (const char* command : {"encode negative.cube", "inspect negative.cube"}) {
        runWrong(std::string(command) + " >/dev/full",
                 "cannot write to the standard output: No space left on device", "", 75);
    }
}

// ---- Looks

TEST_F(Environment, encodesWhatComesThroughAPipe) {
    const std::string expected = runWell("encode negative.cube");
    const std::string name = "TWLUT3 0 negative";
    ASSERT_EQ(expected.substr(0, name.size()), name);
    EXPECT_EQ(run("encode /dev/stdin", "cat negative.cube |").out,
              "TWLUT3 0 stdin" + expected.substr(name.size()));
}

TEST_F(Environment, refusesABinaryAsALook) {
    runWrong("encode '" TINTWELL_HOST "'", "cannot use '" TINTWELL_HOST "': malformed data line");
    runWrong("render in.png out.png --lut in.png", "cannot use 'in.png': malformed data line");
    EXPECT_FALSE(exists("out.png"));
}

TEST_F(Environment, refusesALookThatCannotBeRead) {
    std::filesystem::create_symlink("missing", file("dangling.cube"));
    std::filesystem::create_symlink("loop.cube", file("loop.cube"));
    runWrong("encode dangling.cube", "cannot read 'dangling.cube': No such file or directory");
    runWrong("encode loop.cube", "cannot read 'loop.cube': Too many levels of symbolic links");
    runWrong("encode /dev/null", "cannot use '/dev/null': the file is empty");
    runWrong("encode /proc/self/mem", "cannot read '/proc/self/mem': Input/output error", "", 75);
    std::string path = "negative.cube";
    while (path.size() < PATH_MAX)
        path = "./" + path;
    runWrong("encode " + path, "cannot read '" + path + "': File name too long");
}

// Truncated sequences, and bytes that are not UTF-8.
TEST_F(Environment, takesALookOfAnyName) {
    for (const std::string name : {"caf\xE9.cube", "\xFF\xFE.cube", "a\x80\xC3.cube", "-n.cube",
                                   "two\nlines.cube", "100% \"q\" $HOME.cube"}) {
        SCOPED_TRACE(name);
        writeNegative(name);
        EXPECT_EQ(runWell("encode './" + name + "'").substr(0, 9), "TWLUT3 0 ");
        expectGraded("", "./" + name);
    }
}

TEST_F(Environment, takesNamesOf255Bytes) {
    const std::string look = std::string(250, 'l') + ".cube";
    const std::string picture = std::string(251, 'p') + ".png";
    writeNegative(look);
    runWell("render in.png " + picture + " --lut " + look);
    EXPECT_EQ(bytes(picture), negative(bytes("in.png")));
}

// Two GiB of nothing, as a download that was cut off may leave them.
TEST_F(Environment, saysThatMemoryIsShort_forALookOfTwoGigabytes) {
#ifdef TINTWELL_SANITIZED
    GTEST_SKIP() << "a sanitizer takes more memory than the limit leaves";
#endif
    const int sparse = open(file("sparse.cube").c_str(), O_CREAT | O_WRONLY, 0600);
    const bool isMade = ftruncate(sparse, off_t{1} << 31) == 0;
    close(sparse);
    if (!isMade) GTEST_SKIP() << "the file system has no sparse files of 2 GiB";
    runWrong("encode sparse.cube", "there is not enough memory", "ulimit -v 1000000;", 75);
}

// ---- The user's language

TEST_F(Environment, printsTheSame_whereNumbersHaveCommas) {
    twtest::writeFile(
        file("half.cube"),
        "LUT_3D_SIZE 2\n0.5 .5 0.5\n1 1 1\n1 1 1\n1 1 1\n1 1 1\n1 1 1\n1 1 1\n1 1 1\n");
    const std::string text = runWell("encode half.cube");
    twtest::writeFile(file("half.twlut"), text);
    const std::string printed = runWell("inspect half.cube");
    runWell("decode half.twlut plain.cube");
    const twtest::CommaLocale comma;
    if (!comma.usable()) GTEST_SKIP() << "no locale with a decimal comma";
    const std::string german = "export LC_ALL=de_DE.UTF-8;";
    EXPECT_EQ(run("encode half.cube", german).out, text);
    EXPECT_EQ(run("inspect half.cube", german).out, printed);
    EXPECT_EQ(run("decode half.twlut comma.cube", german).exitCode, 0);
    EXPECT_EQ(twtest::readFile(file("comma.cube")), twtest::readFile(file("plain.cube")));
}

}  // namespace
}  // namespace program_test
