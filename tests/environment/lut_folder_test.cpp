// Damaged, foreign and special "lut-folder.txt" files.
#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/environment/privileges.h"
#include "tests/environment/user_session.h"

namespace {

namespace fs = std::filesystem;

class LutFolderFile : public twtest::UserSession {
protected:
    LutFolderFile() : file_(home.dataFile("lut-folder.txt")), folder_(home / "LUTs") {
        fs::create_directory(folder_);
    }

    // The folder in which the dialogs of a session open when the file holds these bytes.
    std::string folderWith(const std::string& bytes) {
        twtest::writeFile(file_, bytes);
        run();
        EXPECT_EQ(twtest::readFile(file_), bytes) << "the effect only reads it";
        return dialogFolder();
    }

    // The same with a file of another kind that is there already.
    void expectFallback() {
        run();
        EXPECT_EQ(dialogFolder(), fallbackFolder());
    }

    std::string file_;
    std::string folder_;
};

// UTF-16 as some editors save it, low byte first.
std::string utf16(const std::string& ascii) {
    std::string text;
    for (const char c : ascii)
        text += {c, '\0'};
    return text;
}

TEST_F(LutFolderFile, namesTheFolder_whenItIsInOrder) {
    for (const std::string end : {"", "\n", "\r\n", "  \r\n\n"})
        EXPECT_EQ(folderWith(folder_ + end), folder_) << testing::PrintToString(end);
}

TEST_F(LutFolderFile, isIgnored_whenItNamesNothing) {
    const std::string elf = twtest::readFile("/proc/self/exe").substr(0, 100000);
    for (const std::string& bytes :
         {std::string(), std::string(" \r\n \n"), std::string(3000, ' '), std::string(3000, 'x'),
          "/" + std::string(300, 'x'), std::string(2047, '\0'), elf, "\xEF\xBB\xBF" + folder_,
          "\xFF\xFE" + utf16(folder_), folder_ + "\\", folder_ + "\n" + folder_,
          "\"" + folder_ + "\"", "file://" + folder_, folder_ + "\xFF\xFF\xFF\xFF",
          "\x80" + folder_, std::string("~/LUTs"), std::string("%s%n"), folder_ + "/\r\n."})
        EXPECT_EQ(folderWith(bytes), fallbackFolder())
            << testing::PrintToString(bytes.substr(0, 99));
}

// For the system and so for the dialog a path ends at a zero byte.
TEST_F(LutFolderFile, isReadUpToAZeroByte) {
    const std::string bytes = folder_ + std::string("\0/none", 6);
    EXPECT_EQ(folderWith(bytes), bytes);
    EXPECT_EQ(folderWith(utf16("/")), std::string("/\0", 2));
}

TEST_F(LutFolderFile, isIgnored_whenItIsNoFile) {
    fs::create_directory(file_);
    expectFallback();
    fs::remove(file_);
    for (const char* target : {"nowhere", "lut-folder.txt", "/dev/null", "/dev/zero"}) {
        SCOPED_TRACE(target);
        fs::create_symlink(target, file_);
        expectFallback();
        fs::remove(file_);
    }
}

// No writer: a dialog that waited for one would never open.
TEST_F(LutFolderFile, isIgnored_whenItIsAFifo) {
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    expectFallback();
}

TEST_F(LutFolderFile, isIgnored_whenPermissionsDenyIt) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    twtest::writeFile(file_, folder_);
    chmod(file_.c_str(), 0000);
    expectFallback();
}

TEST_F(LutFolderFile, isIgnored_whenPermissionsHideTheFolder) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    fs::create_directory(folder_ + "/below");
    chmod(folder_.c_str(), 0000);
    EXPECT_EQ(folderWith(folder_ + "/below"), fallbackFolder());
    chmod(folder_.c_str(), 0755);
}

TEST_F(LutFolderFile, mayNameALinkToAFolder) {
    fs::create_symlink("LUTs", home / "link");
    EXPECT_EQ(folderWith(home / "link"), home / "link");
    fs::create_symlink("nowhere", home / "dangling");
    EXPECT_EQ(folderWith(home / "dangling"), fallbackFolder());
}

}  // namespace
