// Runs a part of a test in a process of its own, which starts as a copy of this one.
#pragma once

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <exception>
#include <functional>
#include <new>
#include <string>
#include <type_traits>

namespace twtest {

// A record that a child writes and its parent reads.
template <class Record>
class Shared {
    static_assert(std::is_trivially_copyable_v<Record>);

public:
    Shared()
        : memory_(mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                       -1, 0)) {
        if (memory_ == MAP_FAILED) throw std::bad_alloc();
        new (memory_) Record();
    }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    ~Shared() { munmap(memory_, sizeof(Record)); }

    Record& operator*() const { return *static_cast<Record*>(memory_); }
    Record* operator->() const { return &**this; }

private:
    void* memory_;
};

inline int failuresSoFar() {
    int failures = 0;
    const auto* result = testing::UnitTest::GetInstance()->current_test_info()->result();
    for (int i = 0; i < result->total_part_count(); ++i)
        failures += result->GetTestPartResult(i).failed() ? 1 : 0;
    return failures;
}

// Any other exception ends the child as well: it must not go on with the parent's tests.
[[noreturn]] inline void beChild(const std::function<void()>& body, unsigned seconds) noexcept {
    const int before = failuresSoFar();
    alarm(seconds);
    try {
        body();
    } catch (const std::exception& exception) {
        ADD_FAILURE() << "an exception: " << exception.what();
    }
    std::fflush(nullptr);
    _exit(failuresSoFar() > before ? 1 : 0);
}

// False, with a failure of the test, unless the child came to the end of `body` in time without a
// failure of its own. What a child prints goes where the parent's goes. The parent must have no
// other threads.
inline bool runInChild(const std::function<void()>& body, unsigned seconds = 30) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) beChild(body, seconds);
    int status = 0;
    pid_t ended = child;
    if (child > 0) {
        do {
            ended = waitpid(child, &status, 0);
        } while (ended < 0 && errno == EINTR);
    }
    if (child < 0 || ended != child) {
        ADD_FAILURE() << "no child process";
        return false;
    }
    if (status == 0) return true;
    ADD_FAILURE() << (WIFSIGNALED(status)
                          ? "the child ended by signal " + std::to_string(WTERMSIG(status))
                          : std::string("the child failed"));
    return false;
}

}  // namespace twtest
