#include "tintwell_host/files/memory_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tintwell_host/files/failure.h"

namespace program_test {
namespace {

TEST(MemoryFile, isWorthAnotherTry_whenTheProcessHasTooManyFiles) {
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none{0, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    try {
        const program::MemoryFile file;
        ADD_FAILURE() << file.path();
    } catch (const program::Failure& failure) {
        EXPECT_TRUE(std::string(failure.what()).ends_with(": Too many open files"))
            << failure.what();
        EXPECT_EQ(failure.exit(), program::Exit::kTryAgain);
    }
    setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace
}  // namespace program_test
