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

using Calls = std::vector<std::string>;

// Where this thread's calls of the two functions below are noted; null: nowhere.
thread_local Calls* notes = nullptr;

void note(const char* function) {
    if (!notes) return;
    const char* lock = tw::heldLock();
    notes->push_back(std::string(function) + ", " + (lock ? lock : "no lock"));
}

Calls callsOfALine() {
    Calls calls;
    notes = &calls;
    tw::logLine("line");
    notes = nullptr;
    return calls;
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
    EXPECT_EQ(callsOfALine(), (Calls{"fopen, log", "fclose, log"}));
}

TEST(LogLock, isHeldOverTheSecondTry_whenTheFolderIsMissing) {
    const twtest::TempHome home(twtest::TempHome::Holds::kSupportFolder);
    EXPECT_EQ(callsOfALine(), (Calls{"fopen, log", "fopen, log", "fclose, log"}));
}

}  // namespace
