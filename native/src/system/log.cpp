#include "native/src/log.h"

#include <sys/stat.h>

#include <cstdarg>
#include <cstdio>
#include <ctime>

#include "native/src/file.h"
#include "native/src/mutex.h"
#include "native/src/never_destroyed.h"
#include "native/src/paths.h"

namespace tw {
namespace {

File openLog() {
    return File(openFile(dataPath(L"effect.log"), "a"));
}

// Only the folder itself: a home without "Library/Application Support" is not one that the host
// runs with.
void createDataFolder() {
    std::wstring folder = dataPath(L"");
    if (!folder.empty()) folder.pop_back();
    ::mkdir(toUtf8(folder).c_str(), 0755);
}

void formatNow(char (&text)[32]) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
}

Mutex& logMutex() {
    static NeverDestroyed<Mutex> mu("log", LockKind::kInnermost);
    return *mu;
}

}  // namespace

void logLine(const char* format, ...) {
    char message[1024];
    std::va_list arguments;
    va_start(arguments, format);
    if (std::vsnprintf(message, sizeof message, format, arguments) < 0) message[0] = '\0';
    va_end(arguments);
    char timestamp[32] = {};
    formatNow(timestamp);

    const std::lock_guard lock(logMutex());
    File file = openLog();
    if (!file) {
        createDataFolder();
        file = openLog();
    }
    if (file) std::fprintf(file.get(), "%s  %s\n", timestamp, message);
}

}  // namespace tw
