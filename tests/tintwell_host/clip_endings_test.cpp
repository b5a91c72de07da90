// How jobs with clips end: stopped, trimmed, failed, and with a source that ends too early.
#include <unistd.h>

#include <algorithm>

#include "tests/tintwell_host/clips_fixture.h"

namespace program_test {
namespace {

constexpr char kFailingServer[] = "export LD_PRELOAD='" TINTWELL_FAILING_SERVER "';";

// So many that their lines do not go into a pipe at once: a job waits for who reads them.
constexpr char kMany[] = "-f lavfi -i testsrc2=size=32x32:rate=25:duration=60 ";

// ---- Stopped

TEST_F(Clips, leaveNothing_whenInterrupted) {
    make(kMany + std::string(kFfv1) + "in.mkv");
    const Outcome outcome = stopAfter(1, "in.mkv out.mkv");
    EXPECT_EQ(outcome.exitCode, 143);
    EXPECT_NE(outcome.err.find(" of 1500 frames"), std::string::npos) << outcome.err;
    EXPECT_FALSE(exists("out.mkv"));
    EXPECT_EQ(partials(), 0);
}

TEST_F(Clips, areHonest_whenInterruptedNearTheEnd) {
    make("-f lavfi -i testsrc2=size=640x360:rate=25:duration=0.4 " + std::string(kFfv1) + "in.mkv");
    for (const int frames : {6, 7, 8, 9, 10})
        expectHonest(stopAfter(frames, "in.mkv out.mkv"), "out.mkv");
}

TEST_F(Clips, areHonest_whenTheLengthIsUnknown) {
    make(kMany + std::string(kFfv1) + "-live 1 in.mkv");
    const Outcome outcome = stopAfter(1, "in.mkv out.mkv --report job.json");
    EXPECT_EQ(outcome.exitCode, 143);
    EXPECT_TRUE(outcome.err.starts_with("tintwell-host: stopped after ")) << outcome.err;
    EXPECT_EQ(report()["exit"], 143);
    EXPECT_FALSE(exists("out.mkv"));
}

// ---- Sources that end too early

TEST_F(Clips, haveStatus75_whenTheFileServerGoesAway) {
    makeForServer();
    runWrong("render server.mov out.mov --report job.json",
             "cannot read 'server.mov': Input/output error", kFailingServer, 75);
    EXPECT_EQ(report()["exit"], 75);
    EXPECT_FALSE(exists("out.mov"));
    EXPECT_EQ(partials(), 0);
}

TEST_F(Clips, sayWhatIsMissing_whenTheSourceIsCutOff) {
    make(std::string(kBars) + kFfv1 + "-movflags faststart whole.mov");
    const std::string whole = twtest::readFile(file("whole.mov"));
    twtest::writeFile(file("in.mov"), whole.substr(0, whole.size() / 2));
    const Outcome outcome = run("render in.mov out.mov");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.err.find("'in.mov' ends after 5 of 10 frames\n"), std::string::npos)
        << outcome.err;
    std::filesystem::remove(file("out.mov"));
    EXPECT_EQ(run("render in.mov out.mov --strict").exitCode, 1);
    EXPECT_FALSE(exists("out.mov"));
    EXPECT_EQ(run("render in.mov out.mov --strict --frames 4,8").exitCode, 1);
    EXPECT_FALSE(exists("out.mov"));
    runWell("render in.mov out.mov --strict --frames 1-3");
}

// An edit shows less than the file holds.
TEST_F(Clips, missNothing_whenTheSourceIsAnEdit) {
    make(std::string(kBars) + kTagged + "-c:v libx264 -bf 0 -g 5 whole.mov");
    make("-ss 0.28 -i whole.mov -c copy in.mov");
    EXPECT_EQ(run("render in.mov out.mov --strict").err, "");
}

TEST_F(Clips, areRefused_whenTheSizeChanges) {
    make(std::string(kBars) + kTagged + "-c:v mjpeg large.avi");
    make(std::string(kBars) + kTagged + "-vf scale=64:48 -c:v mjpeg small.avi");
    twtest::writeFile(file("list"), "file 'large.avi'\nfile 'small.avi'\n");
    make("-f concat -i list -c copy in.mkv");
    runWrong("render in.mkv out.mkv",
             "cannot use 'in.mkv': its frame 11 has 64 x 48, and the clip 96 x 64");
    EXPECT_FALSE(exists("out.mkv"));
    runWell("render in.mkv out.%04d.png");
    EXPECT_EQ(bytes("out.0011.png").size(), 64u * 48 * 4);
}

// ---- Trimmed

TEST_F(Clips, areReadNoFurtherThanAsked) {
    makeForServer();
    runWell("render server.mov out.mov --frames 1-3", kFailingServer);
}

TEST_F(Clips, sayWhatIsCut_pastTheEnd) {
    const std::string rest =
        " of the frames asked for lie past frame 10, the end of the job, and are left out\n";
    for (const std::string clip : {"in.mkv", "in.mov"}) {
        make(std::string(kBars) + "-c:v png " + clip);
        const Outcome outcome = run("render " + clip + " out.mkv --frames 9-12");
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.err, "tintwell-host: 2" + rest) << clip;
        const std::string pixels = pixelsOf("out.mkv");
        EXPECT_EQ(std::count(pixels.begin(), pixels.end(), '\n'), 2);
    }
    make("-i in.mkv s.%04d.png");
    EXPECT_EQ(run("render s.%04d.png out.mkv --frames 10-13").err, "tintwell-host: 3" + rest);
}

TEST_F(Clips, refuseFramesThatNoClipHas) {
    make(std::string(kBars) + kTone + "-shortest -c:v ffv1 -pix_fmt bgr0 in.mkv");
    make(std::string(kBars) + "-f lavfi -i sine=duration=2 -c:v ffv1 -pix_fmt bgr0 long.mkv");
    runWrong("render in.mkv out.mkv --frames 0-9",
             "the frames of a clip count from 1, and '0-9' names others", "", 2);
    runWrong("render long.mkv out.mkv --frames 20-30",
             "all frames asked for lie past the end of the job, which is frame 10");
    EXPECT_FALSE(exists("out.mkv"));
    EXPECT_EQ(partials(), 0);
}

TEST_F(Clips, areTrimmed_whateverIsDamagedElsewhere) {
    makeDamaged("in.mkv");
    EXPECT_EQ(run("render in.mkv out.mkv --strict").exitCode, 1);
    for (const std::string frames : {"1-2", "9-10"})
        EXPECT_EQ(run("render in.mkv out.mkv --strict --frames " + frames).err, "") << frames;
}

// ---- Failed

TEST_F(Clips, areReported_whenTheyFail) {
    makeDamaged("in.mkv");
    EXPECT_EQ(run("render in.mkv out.mkv --strict --report job.json").exitCode, 1);
    EXPECT_EQ(report()["exit"], 1);
    EXPECT_TRUE(report()["reason"].get<std::string>().starts_with("1 frames of 'in.mkv' are "));
    EXPECT_FALSE(exists("out.mkv"));
    EXPECT_EQ(run("render in.mkv out.mkv --report job.json", kFullDisk).exitCode, 75);
    EXPECT_EQ(report()["exit"], 75);
    EXPECT_FALSE(exists("out.mkv"));
}

TEST_F(Clips, removeWhatKilledJobsHaveLeft) {
    make(std::string(kBars) + kFfv1 + "in.mkv");
    char host[64] = "";
    ASSERT_EQ(gethostname(host, sizeof host - 1), 0);
    twtest::writeFile(file(std::string(".partial-") + host + "-999999999-0"), "half");
    runWell("render in.mkv out.mkv");
    EXPECT_EQ(partials(), 0);
}

}  // namespace
}  // namespace program_test
