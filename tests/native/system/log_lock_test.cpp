// Lines of several threads never meet in the file: it is opened, written and closed under one lock.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

#include "native/src/log.h"
#include "native/src/mutex.h"
#include "tests/support/temp_folder.h"

namespace {

using Calls = std::vector<std::string>;

// Where this thread's calls of the functions below are noted; null: nowhere.
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

int print(char* text, std::size_t size, const char* format, std::va_list arguments) {
    note("vsnprintf");
    return next<decltype(vsnprintf)>("vsnprintf")(text, size, format, arguments);
}

}  // namespace

extern "C" int vsnprintf(char* text, std::size_t size, const char* format, std::va_list arguments) {
    return print(text, size, format, arguments);
}

// What fortified headers make of vsnprintf.
extern "C" int __vsnprintf_chk(char* text, std::size_t size, int, std::size_t, const char* format,
                               std::va_list arguments) {
    return print(text, size, format, arguments);
}

extern "C" std::tm* localtime_r(const std::time_t* time, std::tm* parts) {
    note("localtime_r");
    return next<decltype(localtime_r)>("localtime_r")(time, parts);
}

extern "C" std::size_t strftime(char* text, std::size_t size, const char* format,
                                const std::tm* parts) {
    note("strftime");
    return next<decltype(strftime)>("strftime")(text, size, format, parts);
}

namespace {

// The file calls of one line.
Calls fileCalls() {
    Calls calls = callsOfALine();
    std::erase_if(calls, [](const std::string& call) { return !call.starts_with("f"); });
    return calls;
}

TEST(LogLock, isHeldAsLongAsTheFileIsOpen) {
    const twtest::TempHome home;
    EXPECT_EQ(fileCalls(), (Calls{"fopen, log", "fclose, log"}));
}

TEST(LogLock, isTakenOnceMessageAndTimeAreFormatted) {
    const twtest::TempHome home;
    EXPECT_EQ(callsOfALine(), (Calls{"vsnprintf, no lock", "localtime_r, no lock",
                                     "strftime, no lock", "fopen, log", "fclose, log"}));
}

TEST(LogLock, isHeldOverTheSecondTry_whenTheFolderIsMissing) {
    const twtest::TempHome home(twtest::TempHome::Holds::kSupportFolder);
    EXPECT_EQ(fileCalls(), (Calls{"fopen, log", "fopen, log", "fclose, log"}));
}

}  // namespace
