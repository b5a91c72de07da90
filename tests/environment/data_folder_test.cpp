// The data folder and the files that the effect writes there, locked, full, or of another kind.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "tests/environment/privileges.h"
#include "tests/environment/small_disk.h"
#include "tests/environment/user_session.h"

namespace {

namespace fs = std::filesystem;
using twtest::Lines;
using twtest::readFile;
using twtest::writeFile;

class DataFolder : public twtest::UserSession {
protected:
    DataFolder()
        : folder_(home.dataFolder()),
          log_(home.dataFile("effect.log")),
          request_(home.dataFile("edit-request.json")) {}

    void expectNoTrace() {
        const auto before = twtest::treeOf(home.path());
        run();
        EXPECT_EQ(twtest::treeOf(home.path()), before);
    }

    std::string folder_;
    std::string log_;
    std::string request_;
};

// ---- The folder

TEST_F(DataFolder, isMadeWithTheFirstLine_whenMissing) {
    fs::remove(folder_);
    run();
    EXPECT_EQ(log(), wholeLog());
    EXPECT_TRUE(hasRequest());
}

TEST_F(DataFolder, losesLogAndRequest_whenItIsNoFolder) {
    fs::remove(folder_);
    writeFile(folder_, "mine");
    expectNoTrace();
    fs::remove(folder_);
    fs::create_symlink("nowhere", folder_);
    expectNoTrace();
    fs::remove(folder_);
    fs::create_symlink("Tintwell", folder_);
    expectNoTrace();
    fs::remove(folder_);
    ASSERT_EQ(mkfifo(folder_.c_str(), 0600), 0);
    expectNoTrace();
}

TEST_F(DataFolder, mayBeALinkToAnotherFolder) {
    fs::remove(folder_);
    fs::create_directory(home / "elsewhere");
    fs::create_symlink(home / "elsewhere", folder_);
    run();
    EXPECT_EQ(logAt(home / "elsewhere/effect.log"), wholeLog());
    EXPECT_TRUE(holdsRequest(home / "elsewhere/edit-request.json"));
}

TEST_F(DataFolder, losesLogAndRequest_whenPermissionsDenyIt) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    for (const mode_t mode : {0555u, 0000u}) {
        chmod(folder_.c_str(), mode);
        run();
        chmod(folder_.c_str(), 0755);
        EXPECT_TRUE(fs::is_empty(folder_)) << mode;
    }
}

// The files can be created but not written: they stay empty.
TEST_F(DataFolder, losesLogAndRequest_whileItsDiskIsFull) {
    const twtest::SmallDisk disk(folder_);
    if (!disk.mounted()) GTEST_SKIP() << "this user may not mount a disk, even for himself";
    disk.fill();
    run();
    EXPECT_EQ(readFile(log_), "");
    EXPECT_EQ(readFile(request_), "");
    disk.makeRoom();
    run();
    EXPECT_EQ(log(), wholeLog());
    EXPECT_TRUE(hasRequest());
}

TEST_F(DataFolder, keepsItsLines_whileItsDiskIsFull) {
    const twtest::SmallDisk disk(folder_);
    if (!disk.mounted()) GTEST_SKIP() << "this user may not mount a disk, even for himself";
    const std::string old = std::string(disk.blockSize() - 1, 'x') + "\n";
    writeFile(log_, old);
    disk.fill();
    run();
    EXPECT_EQ(readFile(log_), old);
}

// ---- The log

TEST_F(DataFolder, addsToALogOfMoreThanFourGigabytes) {
    constexpr off_t kOld = (off_t{1} << 32) + 7;
    const int sparse = open(log_.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    const bool made = ftruncate(sparse, kOld) == 0;
    close(sparse);
    if (!made) GTEST_SKIP() << "this file system has no files of that size";
    run();
    EXPECT_GT(fs::file_size(log_), static_cast<std::uintmax_t>(kOld));
}

// ---- Each of the two files, and what a session then leaves in the other one

enum class File { kLog, kRequest };

class DataFolderFile : public DataFolder, public testing::WithParamInterface<File> {
protected:
    bool isLog() const { return GetParam() == File::kLog; }

    // A session that leaves the other file, whole, whatever becomes of this one.
    void expectOtherFile() {
        run();
        if (isLog()) {
            EXPECT_TRUE(hasRequest());
            fs::remove(request_);
        } else {
            EXPECT_EQ(log(), wholeLog());
            fs::remove(log_);
        }
    }

    const std::string file_ = isLog() ? log_ : request_;
};

INSTANTIATE_TEST_SUITE_P(, DataFolderFile, testing::Values(File::kLog, File::kRequest),
                         [](const auto& row) {
                             return std::string(row.param == File::kLog ? "Log" : "Request");
                         });

TEST_P(DataFolderFile, isLostAlone_whenItIsNoFile) {
    fs::create_directory(file_);
    expectOtherFile();
    EXPECT_TRUE(fs::is_empty(file_));
    const std::string itself = fs::path(file_).filename();
    for (const std::string& target :
         {itself, std::string("no/such/folder"), std::string("/dev/null")}) {
        SCOPED_TRACE(target);
        fs::remove(file_);
        fs::create_symlink(target, file_);
        expectOtherFile();
    }
}

TEST_P(DataFolderFile, isLostAlone_whenNothingCanBeWrittenToIt) {
    fs::create_symlink("/dev/full", file_);
    expectOtherFile();
}

// No reader: a session that waited for one would never end.
TEST_P(DataFolderFile, isLostAlone_whenItIsAFifo) {
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    expectOtherFile();
}

TEST_P(DataFolderFile, staysAsItIs_whenPermissionsDenyIt) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    writeFile(file_, "older\n");
    chmod(file_.c_str(), 0444);
    expectOtherFile();
    EXPECT_EQ(readFile(file_), "older\n");
}

TEST_P(DataFolderFile, isMadeWhereALinkLeads) {
    const std::string target = home / "elsewhere";
    fs::create_symlink(target, file_);
    run();
    if (isLog()) {
        EXPECT_EQ(logAt(target), wholeLog());
    } else {
        EXPECT_TRUE(holdsRequest(target));
    }
}

}  // namespace
