#include "tests/quitting/ending.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <utility>

namespace quitting {
namespace {

constexpr unsigned kSeconds = 60;

// Never destroyed: both are used last of all.
std::function<void()>* atLast = nullptr;
thread_local bool isAnnounced = false;

[[noreturn]] void endBadly(const char* words) {
    std::fprintf(stderr, "%s\n", words);
    std::_Exit(EXIT_FAILURE);
}

void guarded(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& exception) {
        endBadly(exception.what());
    }
}

}  // namespace

void expectGoodEnd(const std::function<void()>& body) {
    std::fflush(nullptr);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        alarm(kSeconds);
        guarded(body);
        std::exit(EXIT_SUCCESS);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_FALSE(WIFSIGNALED(status)) << "ended by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), EXIT_SUCCESS);
}

void atTheVeryEnd(std::function<void()> work) {
    atLast = new std::function<void()>(std::move(work));
    std::atexit([] { guarded(*atLast); });
}

std::thread startThread(std::function<void()> work) {
    return std::thread([work = std::move(work)] { guarded(work); });
}

void require(bool holds, const std::string& words) {
    if (!holds) throw std::runtime_error(words);
}

void Gate::announce() {
    isAnnounced = true;
}

void Gate::step() {
    if (!isAnnounced) return;
    isAnnounced = false;
    std::unique_lock lock(mutex_);
    ++waiting_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return isOpen_; });
}

void Gate::waitFor(int threads) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this, threads] { return waiting_ == threads; });
}

void Gate::open() {
    const std::lock_guard lock(mutex_);
    isOpen_ = true;
    changed_.notify_all();
}

}  // namespace quitting
