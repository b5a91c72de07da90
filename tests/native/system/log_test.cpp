// logLine.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "native/src/log.h"
#include "tests/support/effect_log.h"
#include "tests/support/temp_folder.h"

namespace {

using twtest::TempHome;

using twtest::messageOf;

constexpr std::size_t kStampLength = 19;

class Log : public ::testing::Test {
protected:
    std::string written() const { return twtest::readFile(home_.dataFile("effect.log")); }
    twtest::Lines messages() const { return twtest::logLines(home_); }

    TempHome home_;
};

TEST_F(Log, writesStampTwoBlanksAndMessage) {
    tw::logLine("LUT button: cancelled");
    EXPECT_EQ("LUT button: cancelled\n", messageOf(written()));
}

TEST_F(Log, formatsArguments_likePrintf) {
    tw::logLine("GPU: filter ready on device %u (%s), %5.2f%%", 3U, "Metal", 12.345);
    EXPECT_EQ("GPU: filter ready on device 3 (Metal), 12.35%\n", messageOf(written()));
}

TEST_F(Log, writesEmptyMessage) {
    tw::logLine("%s", "");
    EXPECT_EQ("\n", messageOf(written()));
}

TEST_F(Log, appends_toWhatIsThere) {
    twtest::writeFile(home_.dataFile("effect.log"), "old\n");
    tw::logLine("first");
    tw::logLine("second");
    EXPECT_TRUE(written().starts_with("old\n"));
    EXPECT_EQ(twtest::Lines({"no stamp: old", "first", "second"}), messages());
}

struct Zone {
    const char* name;
    long secondsEast;
};

std::string stampOf(std::time_t time, const Zone& zone) {
    const std::time_t shifted = time + zone.secondsEast;
    std::tm parts{};
    gmtime_r(&shifted, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts);
    return text;
}

TEST_F(Log, stampsLocalTime) {
    // Twelve hours apart: one of them counts 13 or more, or 0, whenever this runs.
    for (const Zone& zone : {Zone{"TWT-05:30", 19800}, Zone{"TWT+06:30", -23400}}) {
        std::filesystem::remove(home_.dataFile("effect.log"));
        setenv("TZ", zone.name, 1);
        tzset();
        const std::time_t before = std::time(nullptr);
        tw::logLine("now");
        const std::time_t after = std::time(nullptr);
        const std::string stamp = written().substr(0, kStampLength);
        bool found = false;
        for (std::time_t time = before; time <= after; ++time)
            found = found || stamp == stampOf(time, zone);
        EXPECT_TRUE(found) << stamp << " between " << before << " and " << after;
    }
}

TEST_F(Log, cutsMessage_at1023Bytes) {
    for (const std::size_t length : {1022U, 1023U, 1024U, 2000U}) {
        std::filesystem::remove(home_.dataFile("effect.log"));
        std::string message;
        for (std::size_t i = 0; i < length; ++i)
            message += static_cast<char>('a' + i % 26);
        tw::logLine("%s", message.c_str());
        EXPECT_EQ(message.substr(0, 1023) + "\n", messageOf(written())) << length;
    }
}

TEST_F(Log, doesNotEscapeLineFeeds) {
    tw::logLine("one\ntwo\n");
    EXPECT_EQ("one\ntwo\n\n", messageOf(written()));
}

TEST_F(Log, keepsNoFileOpen) {
    tw::logLine("first");
    std::filesystem::rename(home_.dataFile("effect.log"), home_.dataFile("moved.log"));
    tw::logLine("second");
    EXPECT_EQ("first\n", messageOf(twtest::readFile(home_.dataFile("moved.log"))));
    EXPECT_EQ("second\n", messageOf(written()));
}

TEST_F(Log, followsHome_onEveryCall) {
    tw::logLine("here");
    const TempHome other;
    tw::logLine("there");
    EXPECT_EQ("here\n", messageOf(written()));
    EXPECT_EQ("there\n", messageOf(twtest::readFile(other.dataFile("effect.log"))));
}

TEST(LogFolder, isCreated_whenOnlyItIsMissing) {
    const mode_t mask = umask(0);
    const TempHome home(TempHome::Holds::kSupportFolder);
    tw::logLine("first");
    umask(mask);
    EXPECT_EQ("first\n", messageOf(twtest::readFile(home.dataFile("effect.log"))));
    struct stat status = {};
    ASSERT_EQ(0, stat(home.dataFolder().c_str(), &status));
    EXPECT_TRUE(S_ISDIR(status.st_mode));
    EXPECT_EQ(0755U, status.st_mode & 07777U);
}

TEST(LogFolder, isNotCreated_whenItsParentIsMissing) {
    const TempHome home(TempHome::Holds::kNothing);
    tw::logLine("lost");
    EXPECT_TRUE(std::filesystem::is_empty(home.path()));
    std::filesystem::create_directories(home.path() + "/Library");
    tw::logLine("lost");
    EXPECT_TRUE(std::filesystem::is_empty(home.path() + "/Library"));
}

TEST(LogFolder, isFoundInHomesBeyondAscii) {
    const twtest::TempFolder folder;
    const std::string home = folder / "J\xC3\xBCrgen \xF0\x9F\x98\x80";
    std::filesystem::create_directories(home + "/Library/Application Support");
    setenv("HOME", home.c_str(), 1);
    tw::logLine("x");
    EXPECT_EQ(
        "x\n",
        messageOf(twtest::readFile(home + "/Library/Application Support/Tintwell/effect.log")));
}

// Neither attempt to open can succeed; the call returns, and so does the next one.
TEST(LogFile, isDropped_whenItCannotBeWritten) {
    const TempHome home;
    std::filesystem::create_directories(home.dataFile("effect.log"));
    tw::logLine("lost");
    tw::logLine("lost");
    EXPECT_TRUE(std::filesystem::is_empty(home.dataFile("effect.log")));
    std::filesystem::remove(home.dataFile("effect.log"));
    tw::logLine("found");
    EXPECT_EQ("found\n", messageOf(twtest::readFile(home.dataFile("effect.log"))));
}

TEST(LogFile, isSoughtAtRoot_whenHomeIsUnset) {
    if (std::filesystem::exists("/Library/Application Support"))
        GTEST_SKIP() << "this machine has the folder that the call must not find";
    const TempHome home;
    unsetenv("HOME");
    tw::logLine("lost");
    EXPECT_FALSE(std::filesystem::exists("/Library"));
    EXPECT_TRUE(std::filesystem::is_empty(home.dataFolder()));
    setenv("HOME", home.path().c_str(), 1);
    tw::logLine("found");
    EXPECT_EQ("found\n", messageOf(twtest::readFile(home.dataFile("effect.log"))));
}

void logMany(char who, int lines) {
    const std::string filler(900, who);
    for (int i = 0; i < lines; ++i)
        tw::logLine("%c %d %s", who, i, filler.c_str());
}

TEST_F(Log, writesWholeLines_fromTwoThreads) {
    constexpr int kLines = 200;
    std::thread a(logMany, 'a', kLines);
    std::thread b(logMany, 'b', kLines);
    a.join();
    b.join();
    int next[2] = {0, 0};
    for (const std::string& message : messages()) {
        ASSERT_TRUE(message[0] == 'a' || message[0] == 'b') << message;
        const int number = next[message[0] == 'b']++;
        ASSERT_EQ(std::string(1, message[0]) + " " + std::to_string(number) + " " +
                      std::string(900, message[0]),
                  message);
    }
    EXPECT_EQ(kLines, next[0]);
    EXPECT_EQ(kLines, next[1]);
}

// Threads that all find the folder missing at once.
TEST(LogFolder, losesNoLine_whenSeveralThreadsCreateIt) {
    const TempHome home(TempHome::Holds::kSupportFolder);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([i] { tw::logLine("thread %d", i); });
    for (std::thread& thread : threads)
        thread.join();
    const twtest::Lines messages = twtest::logLines(home);
    ASSERT_EQ(8U, messages.size());
    std::vector<bool> seen(8, false);
    for (const std::string& message : messages) {
        ASSERT_EQ("thread ", message.substr(0, 7));
        seen[static_cast<std::size_t>(std::stoi(message.substr(7)))] = true;
    }
    EXPECT_EQ(std::vector<bool>(8, true), seen);
}

}  // namespace
