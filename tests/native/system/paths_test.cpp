// Home, data folder, LUT folder and files by wide path.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "native/src/paths.h"
#include "tests/support/temp_folder.h"

namespace {

using twtest::TempHome;

std::wstring wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

const std::wstring kFallback = L"/Documents/Tintwell LUTs";

TEST(HomeDir, isHome_whateverItHolds) {
    struct Row {
        const char* home;
        std::wstring wide;
    };
    const Row rows[] = {{"/Users/a", L"/Users/a"},
                        {"/Users/a/", L"/Users/a/"},
                        {"", L""},
                        {"/", L"/"},
                        {"relative", L"relative"},
                        {"/Users/J\xC3\xBCrgen \xF0\x9F\x98\x80", L"/Users/J\u00FCrgen \U0001F600"},
                        {"/bad\x80/cut\xE2\x82", L"/bad\u0080/cut"}};
    for (const Row& row : rows) {
        setenv("HOME", row.home, 1);
        EXPECT_EQ(row.wide, tw::homeDir()) << row.home;
    }
}

TEST(HomeDir, isEmpty_whenUnset) {
    unsetenv("HOME");
    EXPECT_EQ(L"", tw::homeDir());
}

TEST(HomeDir, followsEnvironment_onEveryCall) {
    setenv("HOME", "/one", 1);
    EXPECT_EQ(L"/one", tw::homeDir());
    setenv("HOME", "/two", 1);
    EXPECT_EQ(L"/two", tw::homeDir());
    unsetenv("HOME");
    EXPECT_EQ(L"", tw::homeDir());
}

TEST(DataPath, joinsHomeFolderAndName) {
    setenv("HOME", "/Users/a", 1);
    EXPECT_EQ(L"/Users/a/Library/Application Support/Tintwell/effect.log",
              tw::dataPath(L"effect.log"));
    EXPECT_EQ(L"/Users/a/Library/Application Support/Tintwell/", tw::dataPath(L""));
    EXPECT_EQ(L"/Users/a/Library/Application Support/Tintwell/\u00E9/x", tw::dataPath(L"\u00E9/x"));
    setenv("HOME", "/Users/a/", 1);
    EXPECT_EQ(L"/Users/a//Library/Application Support/Tintwell/x", tw::dataPath(L"x"));
}

TEST(DataPath, startsAtRoot_whenHomeIsUnset) {
    unsetenv("HOME");
    EXPECT_EQ(L"/Library/Application Support/Tintwell/effect.log", tw::dataPath(L"effect.log"));
    EXPECT_EQ(L"/Library/Application Support/Tintwell/", tw::dataPath(L""));
}

TEST(DataPath, createsNothing) {
    const TempHome home(TempHome::Holds::kNothing);
    tw::dataPath(L"effect.log");
    EXPECT_TRUE(std::filesystem::is_empty(home.path()));
}

class LutFolder : public ::testing::Test {
protected:
    // The folder that lutFolder answers when lut-folder.txt holds `content`.
    std::wstring with(const std::string& content) {
        twtest::writeFile(home_.dataFile("lut-folder.txt"), content);
        return tw::lutFolder();
    }

    std::string makeFolder(const std::string& name) {
        std::filesystem::create_directories(home_ / name);
        return home_ / name;
    }

    std::wstring fallback() const { return wide(home_.path()) + kFallback; }

    TempHome home_;
};

TEST_F(LutFolder, isFallback_withoutFile) {
    EXPECT_EQ(fallback(), tw::lutFolder());
    EXPECT_FALSE(std::filesystem::exists(home_ / "Documents"));
}

TEST_F(LutFolder, isFoldersPath_withoutTrailingLineEndsAndBlanks) {
    const std::string folder = makeFolder("LUTs");
    for (const std::string end : {"", "\n", "\r\n", "\r", " ", "  \r\n \n\n", "\n\n\n"})
        EXPECT_EQ(wide(folder), with(folder + end)) << ::testing::PrintToString(end);
}

TEST_F(LutFolder, isFallback_whenTabTrails) {
    const std::string folder = makeFolder("LUTs");
    EXPECT_EQ(fallback(), with(folder + "\t"));
    EXPECT_EQ(fallback(), with(folder + "\t\r\n"));
}

TEST_F(LutFolder, keepsTab_thatBelongsToTheName) {
    const std::string folder = makeFolder("LUTs\t");
    EXPECT_EQ(wide(folder), with(folder + " \n"));
}

TEST_F(LutFolder, isFallback_whenFileGivesNothingUsable) {
    const std::string folder = makeFolder("LUTs");
    for (const std::string& content :
         {std::string(), std::string("\n"), std::string("   \r\n \n"), " " + folder, "\t" + folder,
          "\n" + folder, home_ / "missing", folder + "\nsecond line\n", std::string("\xC3")})
        EXPECT_EQ(fallback(), with(content)) << ::testing::PrintToString(content);
}

TEST_F(LutFolder, isFallback_whenFileIsAFolder) {
    std::filesystem::create_directories(home_.dataFile("lut-folder.txt"));
    EXPECT_EQ(fallback(), tw::lutFolder());
}

TEST_F(LutFolder, mayBeAPlainFile) {
    twtest::writeFile(home_ / "plain.cube", "x");
    EXPECT_EQ(wide(home_ / "plain.cube"), with((home_ / "plain.cube") + "\n"));
}

TEST_F(LutFolder, isDecodedFromUtf8) {
    const std::string folder = makeFolder("L\xC3\xBCTs \xF0\x9F\x98\x80");
    EXPECT_EQ(wide(home_.path()) + L"/L\u00FCTs \U0001F600", with(folder + "\n"));
}

TEST_F(LutFolder, dropsCutOffSequence_atTheEnd) {
    const std::string folder = makeFolder("LUTs");
    EXPECT_EQ(wide(folder), with(folder + "\xE2\x82"));
}

// A path to `folder` of exactly `length` bytes.
std::string stretched(const std::string& folder, std::size_t length) {
    std::string path = folder;
    while (path.size() + 2 <= length)
        path += "/.";
    return path.size() < length ? path + "/" : path;
}

TEST_F(LutFolder, countsOnly2047Bytes_ofItsFile) {
    const std::string folder = makeFolder("LUTs");
    const std::string longest = stretched(folder, 2047);
    ASSERT_EQ(2047U, longest.size());
    EXPECT_EQ(wide(longest), with(longest));
    EXPECT_EQ(wide(longest), with(longest + std::string(953, 'x')));
    const std::string padded = stretched(folder, 2000);
    EXPECT_EQ(wide(padded), with(padded + std::string(47, ' ') + std::string(953, 'x')));
    EXPECT_EQ(fallback(), with(padded + std::string(46, ' ') + std::string(954, 'x')));
}

TEST_F(LutFolder, isFallback_whenPathIsCut) {
    makeFolder("LUTs/xyz");
    const std::string path = stretched(home_ / "LUTs", 2044) + "/xyz";
    ASSERT_EQ(2048U, path.size());
    ASSERT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(fallback(), with(path));
    makeFolder("LUTs/xy");
    EXPECT_EQ(wide(path.substr(0, 2047)), with(path));
}

TEST(LutFolderWithoutHome, isEmpty) {
    if (std::filesystem::exists("/Library/Application Support/Tintwell"))
        GTEST_SKIP() << "this machine has a data folder at its root";
    unsetenv("HOME");
    EXPECT_EQ(L"", tw::lutFolder());
    setenv("HOME", "", 1);
    EXPECT_EQ(L"", tw::lutFolder());
}

TEST(OpenFile, readsAndWrites_byWidePath) {
    const twtest::TempFolder folder;
    const std::wstring path = wide(folder.path()) + L"/gr\u00FCn \U0001F600.txt";
    std::FILE* out = tw::openFile(path, "wb");
    ASSERT_NE(nullptr, out);
    std::fputs("a\r\nb", out);
    std::fclose(out);
    EXPECT_EQ("a\r\nb", twtest::readFile(folder / "gr\xC3\xBCn \xF0\x9F\x98\x80.txt"));
    std::FILE* in = tw::openFile(path, "rb");
    ASSERT_NE(nullptr, in);
    EXPECT_EQ('a', std::fgetc(in));
    std::fclose(in);
    std::FILE* more = tw::openFile(path, "ab");
    ASSERT_NE(nullptr, more);
    std::fputs("c", more);
    std::fclose(more);
    EXPECT_EQ("a\r\nbc", twtest::readFile(folder / "gr\xC3\xBCn \xF0\x9F\x98\x80.txt"));
}

TEST(OpenFile, isNullAndSaysWhy_whenItFails) {
    const twtest::TempFolder folder;
    errno = 0;
    EXPECT_EQ(nullptr, tw::openFile(wide(folder / "missing"), "rb"));
    EXPECT_EQ(ENOENT, errno);
    errno = 0;
    EXPECT_EQ(nullptr, tw::openFile(wide(folder.path()), "wb"));
    EXPECT_EQ(EISDIR, errno);
    EXPECT_EQ(nullptr, tw::openFile(L"", "rb"));
}

// No writer: an open that waited for one would never return.
TEST(OpenFile, isNullAtOnce_forAFifo) {
    const twtest::TempFolder folder;
    ASSERT_EQ(0, mkfifo((folder / "fifo").c_str(), 0600));
    std::filesystem::create_symlink(folder / "fifo", folder / "link");
    for (const char* mode : {"rb", "wb", "a"}) {
        EXPECT_EQ(nullptr, tw::openFile(wide(folder / "fifo"), mode)) << mode;
        EXPECT_EQ(nullptr, tw::openFile(wide(folder / "link"), mode)) << mode;
    }
}

TEST(OpenFile, isNull_whenThePathIsLongerThanTheSystemTakes) {
    const twtest::TempFolder folder;
    EXPECT_EQ(nullptr, tw::openFile(wide(folder / std::string(256, 'x')), "wb"));
    EXPECT_EQ(ENAMETOOLONG, errno);
    std::wstring path = wide(folder.path());
    while (path.size() < PATH_MAX)
        path += L"/.";
    EXPECT_EQ(nullptr, tw::openFile(path + L"/file", "wb"));
    EXPECT_EQ(ENAMETOOLONG, errno);
    EXPECT_FALSE(tw::fileExists(path));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST(FileExists, isTrue_forEveryKindOfEntry) {
    const twtest::TempFolder folder;
    twtest::writeFile(folder / "\xC3\xA9", "");
    ASSERT_EQ(0, mkfifo((folder / "fifo").c_str(), 0600));
    std::filesystem::create_symlink(folder / "fifo", folder / "link");
    EXPECT_TRUE(tw::fileExists(wide(folder.path())));
    EXPECT_TRUE(tw::fileExists(wide(folder.path()) + L"/\u00E9"));
    EXPECT_TRUE(tw::fileExists(wide(folder / "fifo")));
    EXPECT_TRUE(tw::fileExists(wide(folder / "link")));
}

TEST(FileExists, isFalse_forLinksThatLeadNowhere) {
    const twtest::TempFolder folder;
    std::filesystem::create_symlink(folder / "missing", folder / "dangling");
    std::filesystem::create_symlink(folder / "loop", folder / "loop");
    EXPECT_FALSE(tw::fileExists(wide(folder / "dangling")));
    EXPECT_FALSE(tw::fileExists(wide(folder / "loop")));
    EXPECT_FALSE(tw::fileExists(wide(folder / "loop/below")));
}

TEST(FileExists, isFalse_forNothing) {
    const twtest::TempFolder folder;
    EXPECT_FALSE(tw::fileExists(wide(folder / "missing")));
    EXPECT_FALSE(tw::fileExists(L""));
    twtest::writeFile(folder / "file", "");
    EXPECT_FALSE(tw::fileExists(wide(folder / "file/below")));
}

}  // namespace
