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

    void liveWithoutTrace() {
        const auto before = twtest::treeOf(home.path());
        run();
        EXPECT_EQ(twtest::treeOf(home.path()), before);
    }

    // A session that leaves its request and no log.
    void liveWithoutLog() {
        run();
        EXPECT_TRUE(hasRequest());
        fs::remove(request_);
    }

    // A session that leaves its log, request or not.
    void liveWithLog() {
        run();
        EXPECT_EQ(log(), wholeLog());
        fs::remove(log_);
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
    liveWithoutTrace();
    fs::remove(folder_);
    fs::create_symlink("nowhere", folder_);
    liveWithoutTrace();
    fs::remove(folder_);
    fs::create_symlink("Tintwell", folder_);
    liveWithoutTrace();
    fs::remove(folder_);
    ASSERT_EQ(mkfifo(folder_.c_str(), 0600), 0);
    liveWithoutTrace();
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

// The files can be made, but not a byte of them: empty is what is left.
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

TEST_F(DataFolder, costs_the_log_alone_when_that_is_no_file) {
    fs::create_directory(log_);
    liveWithoutLog();
    EXPECT_TRUE(fs::is_empty(log_));
    fs::remove(log_);
    fs::create_symlink("effect.log", log_);
    liveWithoutLog();
    fs::remove(log_);
    fs::create_symlink("no/such/folder", log_);
    liveWithoutLog();
    fs::remove(log_);
    fs::create_symlink("/dev/null", log_);
    liveWithoutLog();
}

TEST_F(DataFolder, costs_the_log_alone_when_nothing_can_be_written_to_it) {
    fs::create_symlink("/dev/full", log_);
    liveWithoutLog();
}

// Nobody reads it: a log that waited would wait for ever.
TEST_F(DataFolder, costs_the_log_alone_when_that_is_a_fifo) {
    ASSERT_EQ(mkfifo(log_.c_str(), 0600), 0);
    liveWithoutLog();
}

TEST_F(DataFolder, costs_the_log_alone_when_permissions_deny_it) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    writeFile(log_, "old\n");
    chmod(log_.c_str(), 0444);
    liveWithoutLog();
    EXPECT_EQ(readFile(log_), "old\n");
}

TEST_F(DataFolder, makes_the_log_that_a_link_leads_to) {
    fs::create_symlink(home / "elsewhere.log", log_);
    run();
    EXPECT_EQ(logAt(home / "elsewhere.log"), wholeLog());
}

TEST_F(DataFolder, addsToALogOfMoreThanFourGigabytes) {
    constexpr off_t kOld = (off_t{1} << 32) + 7;
    const int sparse = open(log_.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    const bool made = ftruncate(sparse, kOld) == 0;
    close(sparse);
    if (!made) GTEST_SKIP() << "this file system has no files of that size";
    run();
    EXPECT_GT(fs::file_size(log_), static_cast<std::uintmax_t>(kOld));
}

// ---- The request

TEST_F(DataFolder, costs_the_request_alone_when_that_is_no_file) {
    fs::create_directory(request_);
    liveWithLog();
    EXPECT_TRUE(fs::is_empty(request_));
    fs::remove(request_);
    fs::create_symlink("edit-request.json", request_);
    liveWithLog();
    fs::remove(request_);
    fs::create_symlink("no/such/folder", request_);
    liveWithLog();
}

TEST_F(DataFolder, costs_the_request_alone_when_nothing_can_be_written_to_it) {
    fs::create_symlink("/dev/full", request_);
    liveWithLog();
}

TEST_F(DataFolder, costs_the_request_alone_when_that_is_a_fifo) {
    ASSERT_EQ(mkfifo(request_.c_str(), 0600), 0);
    liveWithLog();
}

TEST_F(DataFolder, keeps_the_older_request_when_permissions_deny_a_new_one) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    writeFile(request_, "older\n");
    chmod(request_.c_str(), 0444);
    liveWithLog();
    EXPECT_EQ(readFile(request_), "older\n");
}

TEST_F(DataFolder, makes_the_request_that_a_link_leads_to) {
    fs::create_symlink(home / "elsewhere.json", request_);
    run();
    EXPECT_TRUE(holdsRequest(home / "elsewhere.json"));
}

}  // namespace
