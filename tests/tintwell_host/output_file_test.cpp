// Files that are being written, beside those of others who come upon the same names.
#include "tintwell_host/files/output_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include "tests/support/temp_folder.h"

namespace program_test {
namespace {

class OutputFile : public testing::Test {
protected:
    // The name that the next file to be written would have.
    std::string nextName() const {
        std::string name = program::PartialFile(out_).name();
        EXPECT_TRUE(name.ends_with("-0")) << name;
        name.back() = '1';
        return name;
    }

    twtest::TempFolder folder_;
    std::string out_ = folder_ / "out";
};

// As a process in another container does, which has the machine's name and its own numbers.
TEST_F(OutputFile, leavesWhatAnotherWrites_underTheSameName) {
    const std::string name = nextName();
    twtest::writeFile(name, "another's");
    const int lock = ::open(name.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    program::writeWhole(out_, "own");
    ::close(lock);
    EXPECT_EQ(twtest::readFile(out_), "own");
    EXPECT_EQ(twtest::readFile(name), "another's");
}

TEST_F(OutputFile, leavesWhatAnotherBegins_onceItsOwnHasItsName) {
    std::string name;
    {
        program::PartialFile partial(out_);
        name = partial.name();
        partial.keep();
        twtest::writeFile(name, "another's");
    }
    EXPECT_EQ(twtest::readFile(name), "another's");
}

TEST_F(OutputFile, takesOverWhatNobodyWrites) {
    const std::string name = nextName();
    twtest::writeFile(name, "of a killed run, and longer");
    program::writeWhole(out_, "own");
    EXPECT_EQ(twtest::readFile(out_), "own");
    EXPECT_FALSE(std::filesystem::exists(name));
}

}  // namespace
}  // namespace program_test
