#include "tintwell_host/files/memory_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tintwell_host/files/failure.h"

namespace program_test {
namespace {

// While it lives, the process can open no file.
class NoFiles {
public:
    NoFiles() {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{0, before_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoFiles() { setrlimit(RLIMIT_NOFILE, &before_); }
    NoFiles(const NoFiles&) = delete;
    NoFiles& operator=(const NoFiles&) = delete;

private:
    rlimit before_{};
};

TEST(MemoryFile, isWorthAnotherTry_whenTheProcessHasTooManyFiles) {
    try {
        const NoFiles limit;
        const program::MemoryFile file;
        ADD_FAILURE() << file.path();
    } catch (const program::Failure& failure) {
        EXPECT_TRUE(std::string(failure.what()).ends_with(": Too many open files"))
            << failure.what();
        EXPECT_EQ(failure.exit(), program::Exit::kTryAgain);
    }
}

}  // namespace
}  // namespace program_test
