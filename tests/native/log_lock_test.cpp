// Lines of several threads never meet in the file: it is opened, written and closed under one lock.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "native/src/log.h"
#include "native/src/mutex.h"
#include "tests/support/temp_folder.h"

namespace {

// Each call of the two functions below with the lock that its thread held.
std::vector<std::string> calls;

void note(const char* function) {
    const char* lock = tw::heldLock();
    calls.push_back(std::string(function) + ", " + (lock ? lock : "no lock"));
}

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// The program's own functions are found before the system's.
extern "C" std::FILE* fopen(const char* path, const char* mode) {
    note("fopen");
    return next<decltype(fopen)>("fopen")(path, mode);
}

extern "C" int fclose(std::FILE* file) {
    note("fclose");
    return next<decltype(fclose)>("fclose")(file);
}

namespace {

TEST(LogLock, isHeldAsLongAsTheFileIsOpen) {
    const twtest::TempHome home;
    calls.clear();
    tw::logLine("line");
    EXPECT_EQ(calls, (std::vector<std::string>{"fopen, log", "fclose, log"}));
}

TEST(LogLock, isHeldOverTheSecondTry_whenTheFolderIsMissing) {
    const twtest::TempHome home(twtest::TempHome::Holds::kSupportFolder);
    calls.clear();
    tw::logLine("line");
    EXPECT_EQ(calls, (std::vector<std::string>{"fopen, log", "fopen, log", "fclose, log"}));
}

}  // namespace
