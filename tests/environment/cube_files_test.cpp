// Picked files that are truncated, huge, special, unreadable or no .cube file at all.
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>

#include "tests/effect/lut_button_fixture.h"
#include "tests/environment/privileges.h"
#include "tests/support/failing_calls.h"

namespace {

namespace fs = std::filesystem;
using twtest::cube;
using twtest::kLut;

class CubeFile : public twtest::LutButton {
protected:
    void expectUnreadable(const std::string& file, const std::string& reason = "") {
        SCOPED_TRACE(file);
        dialogs().alerts.clear();
        LutButton::expectUnreadable(file, reason);
    }
};

// ---- Cut off

const std::string kSizeLine = "LUT_3D_SIZE 2\n";
const std::string kCube =
    kSizeLine + "0 0 0\n1 0.25 0\n0 1 0\n1 1 0\n0 0 1\n1 0 0.5\n0 1 1\n1 1 1.5\n";

// The parser's reason against a truncated kCube; empty when it is taken.
std::string reasonAgainst(const std::string& text) {
    if (text.size() < kSizeLine.size() - 3) return text.empty() ? "" : "no LUT_3D_SIZE";
    if (text.size() < kSizeLine.size() - 1) return "LUT_3D_SIZE out of range";
    std::istringstream lines(text.substr(std::min(text.size(), kSizeLine.size())));
    int points = 0, numbers = 3;
    for (std::string line; std::getline(lines, line); ++points) {
        std::istringstream words(line);
        numbers = 0;
        for (std::string word; words >> word;)
            ++numbers;
    }
    if (numbers < 3) return "malformed data line";
    return points == 8 ? "" : "wrong number of values";
}

TEST_F(CubeFile, isRefused_whereverItIsCutOff) {
    const std::size_t lastNumber = kCube.size() - std::string("1.5\n").size();
    for (std::size_t length = 0; length <= lastNumber; ++length) {
        const std::string text = kCube.substr(0, length);
        expectUnreadable(write("cut.cube", text), reasonAgainst(text));
    }
}

// A file that ends inside its last number still has enough numbers: the damage cannot be seen.
TEST_F(CubeFile, isTaken_whenOnlyDigitsOfItsLastNumberAreMissing) {
    for (const std::string missing : {"\n", "5\n", ".5\n"})
        expectLoaded("cut.cube", kCube.substr(0, kCube.size() - missing.size()), 0, "cut");
}

// ---- Long

TEST_F(CubeFile, mayHave256Points_thoughNoParameterCanUseThem) {
    const auto result = pickFile(write("fine.cube", cube(256)));
    EXPECT_EQ(result.error, PF_Err_NONE);
    EXPECT_EQ(result.changed, std::vector<int>{kLut});
    EXPECT_EQ(dialogs().alerts, twtest::Alerts());
    EXPECT_EQ(label(), "Choose a LUT");
    const std::size_t text = std::string("TWLUT3 0 fine 256 0 1 ").size() + 256 * 256 * 256 * 8;
    EXPECT_EQ(lutBytes().size(), text * 2);
}

// Two GiB of zeros, which take no room on the disk.
TEST_F(CubeFile, givesAnError_whenItIsLongerThanMemory) {
    const std::string file = path("sparse.cube");
    const int sparse = open(file.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    const bool made = ftruncate(sparse, off_t{1} << 31) == 0;
    close(sparse);
    if (!made) GTEST_SKIP() << "this file system has no files of that size";
    if (!twtest::canFail(twtest::LibraryCall::kNew))
        GTEST_SKIP() << "ThreadSanitizer allocates itself";
    twtest::watchCallsOf(host->module().symbol("EffectMain"));
    twtest::failBlocksFrom(std::size_t{1} << 27);
    const auto pickWithoutMemory = [&] {
        const twtest::Watch watch;
        return pickFile(file);
    };
    expectUnchanged(pickWithoutMemory(), PF_Err_INTERNAL_STRUCT_DAMAGED);
    twtest::letCallsPass();
    EXPECT_EQ(log(), (twtest::Lines{twtest::kPressed, dialogLine()}));
    EXPECT_EQ(dialogs().alerts, twtest::Alerts());
}

// ---- Of another kind

TEST_F(CubeFile, isRefused_whenItIsAProgram) {
    expectUnreadable("/proc/self/exe", "malformed data line");
}

TEST_F(CubeFile, isRefused_whenThereIsNothingToRead) {
    fs::create_symlink("nowhere", path("dangling.cube"));
    fs::create_symlink("loop.cube", path("loop.cube"));
    const std::string file = write("file.cube", cube(2));
    for (const std::string& name :
         {path("dangling.cube"), path("loop.cube"), file + "/", file + "/below.cube",
          std::string("/dev/null"), std::string("relative.cube"), std::string("/"),
          std::string(" ")})
        expectUnreadable(name);
}

// It opens, and every read of it fails.
TEST_F(CubeFile, isRefused_whenItsDiskFails) {
    expectUnreadable("/proc/self/mem");
}

// No writer: a press that waited for one would never end.
TEST_F(CubeFile, isRefused_whenItIsAFifo) {
    ASSERT_EQ(mkfifo(path("fifo.cube").c_str(), 0600), 0);
    expectUnreadable(path("fifo.cube"));
}

TEST_F(CubeFile, isRefused_whenItIsASocket) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path("s.cube").copy(address.sun_path, sizeof address.sun_path - 1);
    const int endpoint = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int bound = bind(endpoint, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    close(endpoint);
    if (bound != 0) GTEST_SKIP() << "the folder's path is too long for a socket";
    expectUnreadable(path("s.cube"));
}

TEST_F(CubeFile, isRefused_whenPermissionsDenyIt) {
    const twtest::WithoutPrivileges none;
    if (!none.works()) GTEST_SKIP() << "permissions do not hold for this user here";
    const std::string file = write("locked/file.cube", cube(2));
    chmod(file.c_str(), 0000);
    expectUnreadable(file);
    chmod(file.c_str(), 0600);
    chmod(path("locked").c_str(), 0000);
    expectUnreadable(file);
    chmod(path("locked").c_str(), 0700);
}

TEST_F(CubeFile, keepsThePresentLook_whenItIsRefused) {
    expectLoaded("Film.cube", cube(3), 0, "Film");
    const twtest::Bytes film = lutBytes();
    for (const std::string& file :
         {write("bad.cube", "x"), write("wide.cube", cube(2, "DOMAIN_MAX 2 2 2\n")),
          path("missing.cube"), std::string("/proc/self/exe")}) {
        const auto result = pickFile(file);
        EXPECT_EQ(result.error, PF_Err_NONE) << file;
        EXPECT_EQ(result.changed, std::vector<int>()) << file;
        EXPECT_EQ(lutBytes(), film) << file;
        EXPECT_EQ(label(), "Film.cube") << file;
    }
    EXPECT_EQ(dialogs().alerts.size(), 4u);
}

}  // namespace
