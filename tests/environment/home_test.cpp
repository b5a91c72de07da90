// HOME as users, their shells and broken machines set it.
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <filesystem>

#include "tests/environment/privileges.h"
#include "tests/environment/small_disk.h"
#include "tests/environment/user_session.h"

namespace {

namespace fs = std::filesystem;
using twtest::Lines;

constexpr char kData[] = "Library/Application Support/Tintwell";

class Home : public twtest::UserSession {
protected:
    void setHome(const std::string& place) { setenv("HOME", place.c_str(), 1); }

    // A session in that home, which leaves no trace on the disk.
    void expectNoTrace(const std::string& place) {
        SCOPED_TRACE(place);
        const auto before = twtest::treeOf(home.path());
        setHome(place);
        run();
        EXPECT_EQ(dialogFolder(), place + "/Documents/Tintwell LUTs");
        EXPECT_EQ(twtest::treeOf(home.path()), before);
    }

    // A session in that home, which leaves its log and its request in the data folder `data`.
    void expectSessionIn(const std::string& place, const std::string& data) {
        SCOPED_TRACE(place);
        fs::create_directories(data);
        setHome(place);
        run();
        EXPECT_EQ(dialogFolder(), place + "/Documents/Tintwell LUTs");
        EXPECT_EQ(logAt(data + "/effect.log"), wholeLog());
        EXPECT_TRUE(holdsRequest(data + "/edit-request.json"));
    }

    void expectSessionWithoutHome() {
        run();
        EXPECT_EQ(dialogFolder(), "");
        EXPECT_FALSE(fs::exists("/Library"));
    }
};

TEST_F(Home, allowsAWholeSession_whenItIsInOrder) {
    run();
    EXPECT_EQ(dialogFolder(), fallbackFolder());
    EXPECT_EQ(log(), wholeLog());
    EXPECT_TRUE(hasRequest());
}

TEST_F(Home, losesLogAndRequest_whenUnsetOrEmpty) {
    if (fs::exists("/Library")) GTEST_SKIP() << "this machine has the folder that must not appear";
    unsetenv("HOME");
    expectSessionWithoutHome();
    setHome("");
    expectSessionWithoutHome();
}

TEST_F(Home, isSoughtFromThePresentFolder_whenRelative) {
    const fs::path before = fs::current_path();
    fs::current_path(home.path());
    expectSessionIn("here", home / "here" + "/" + kData);
    expectSessionIn(".", home / kData);
    fs::current_path(before);
}

TEST_F(Home, losesLogAndRequest_whenMissingOrNoFolder) {
    twtest::writeFile(home / "file", "plain");
    fs::create_symlink(home / "nowhere", home / "dangling");
    fs::create_symlink("loop", home / "loop");
    for (const char* place : {"missing", "missing/below", "file", "file/below", "dangling", "loop"})
        expectNoTrace(home / place);
    for (const char* place : {"/dev/null", "/proc", "/proc/self", "/dev/full"})
        expectNoTrace(place);
}

TEST_F(Home, losesLogAndRequest_whenTooLongForTheSystem) {
    expectNoTrace(home / std::string(256, 'h'));
    std::string path = home.path();
    while (path.size() < PATH_MAX)
        path += "/.";
    expectNoTrace(path);
    expectNoTrace(path + "/" + std::string(100000, 'h'));
}

TEST_F(Home, mayHaveAnyName) {
    for (const std::string name : {"100%s %n %d", " blanks ", "\"q\" 'q' \\b\\",
                                   "Jürgen 日本 \xF0\x9F\x8E\xA8", "$HOME", "~"})
        expectSessionIn(home / name, home / name + "/" + kData);
}

// The conversions change such bytes, and the changed path does not exist.
TEST_F(Home, losesLogAndRequest_whenNotUtf8) {
    fs::remove_all(home / "Library");
    for (const std::string name : {"caf\xE9", "\xFF\xFE", "x\x80"}) {
        const std::string place = home / name;
        fs::create_directories(place + "/" + kData);
        const auto before = twtest::treeOf(home.path());
        setHome(place);
        run();
        EXPECT_EQ(twtest::treeOf(home.path()), before) << testing::PrintToString(name);
    }
}

TEST_F(Home, keepsItsLog_whenALinkLeadsToIt) {
    fs::create_directory(home / "real");
    fs::create_symlink("real", home / "link");
    expectSessionIn(home / "link", home / "real/" + std::string(kData));
}

TEST_F(Home, losesLogAndRequest_whenPermissionsDenyIt) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    const std::string place = home / "locked";
    const std::string support = place + "/Library/Application Support";
    fs::create_directories(support);
    setHome(place);
    for (const auto& [locked, mode] : {std::pair(place, 0444u),
                                       {place, 0u},
                                       {support, 0555u},
                                       {support, 0444u},
                                       {support, 0u}}) {
        chmod(locked.c_str(), mode);
        run();
        chmod(locked.c_str(), 0755);
        EXPECT_TRUE(fs::is_empty(support)) << locked << " with mode " << mode;
    }
}

TEST_F(Home, losesLogAndRequest_onAReadOnlyDisk) {
    fs::create_directory(home / "disk");
    const twtest::SmallDisk disk(home / "disk");
    if (!disk.mounted()) GTEST_SKIP() << "this user may not mount a disk, even for himself";
    fs::create_directories(home / "disk/" + std::string(kData));
    disk.makeReadOnly();
    expectNoTrace(home / "disk");
}

}  // namespace
