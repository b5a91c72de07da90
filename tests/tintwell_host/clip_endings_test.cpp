// How jobs with clips end: stopped, trimmed, failed, and with a source that ends too early.
#include <unistd.h>

#include <algorithm>

#include "tests/tintwell_host/clips_fixture.h"

namespace program_test {
namespace {

// ---- Stopped

TEST_F(Clips, leaveNothing_whenInterrupted) {
    make("-f lavfi -i testsrc2=size=640x360:rate=25:duration=4 " + std::string(kFfv1) + "in.mkv");
    const Outcome outcome = stopAfter(1, "in.mkv out.mkv --threads 1");
    EXPECT_EQ(outcome.exitCode, 143);
    EXPECT_NE(outcome.err.find(" of 100 frames"), std::string::npos) << outcome.err;
    EXPECT_FALSE(exists("out.mkv"));
    EXPECT_EQ(partials(), 0);
}

TEST_F(Clips, areHonest_whenInterruptedNearTheEnd) {
    make("-f lavfi -i testsrc2=size=640x360:rate=25:duration=0.4 " + std::string(kFfv1) + "in.mkv");
    for (const int frames : {6, 7, 8, 9, 10})
        expectHonest(stopAfter(frames, "in.mkv out.mkv"), "out.mkv");
}

TEST_F(Clips, areHonest_whenTheLengthIsUnknown) {
    make("-f lavfi -i testsrc2=size=640x360:rate=25:duration=2 " + std::string(kFfv1) +
         "-live 1 in.mkv");
    const Outcome outcome = stopAfter(2, "in.mkv out.mkv --threads 1 --report job.json");
    EXPECT_EQ(outcome.exitCode, 143);
    EXPECT_TRUE(outcome.err.starts_with("tintwell-host: stopped after ")) << outcome.err;
    EXPECT_EQ(report()["exit"], 143);
    EXPECT_FALSE(exists("out.mkv"));
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

}  // namespace
}  // namespace program_test
