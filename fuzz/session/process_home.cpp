#include "fuzz/session/process_home.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "fuzz/session/violation.h"
#include "tests/support/effect_log.h"

namespace session_fuzz {
namespace {

constexpr long kLongLog = 1 << 20;
constexpr std::size_t kLongestMessage = 1023;

std::string step;
const ProcessHome* open = nullptr;

}  // namespace

void nowRunning(const std::string& name) {
    step = name;
}

void violation(const std::string& sentence) {
    std::fprintf(stderr, "Violation in %s: %s\n", step.c_str(), sentence.c_str());
    std::error_code ignored;
    if (open != nullptr) std::filesystem::remove_all(open->home.path(), ignored);
    std::abort();
}

LogWatch::LogWatch(const std::string& file)
    : file_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644)) {
    require(file_ >= 0, "the log cannot be opened");
}

LogWatch::~LogWatch() {
    ::close(file_);
}

void LogWatch::beginSession() {
    session_.clear();
    if (seen_ < kLongLog) return;
    require(::ftruncate(file_, 0) == 0, "the log cannot be emptied");
    seen_ = 0;
}

void LogWatch::endSession() {
    added();
    const long begin = seen_ - static_cast<long>(session_.size());
    require(textFrom(begin) == session_, "an older part of the log has changed");
}

std::string LogWatch::textFrom(long begin) const {
    struct stat status;
    require(::fstat(file_, &status) == 0 && status.st_size >= begin, "the log has shrunk");
    std::string text(static_cast<std::size_t>(status.st_size - begin), '\0');
    const ssize_t count = ::pread(file_, text.data(), text.size(), begin);
    require(count == static_cast<ssize_t>(text.size()), "the log cannot be read");
    return text;
}

std::string LogWatch::added() {
    const std::string text = textFrom(seen_);
    if (text.empty()) return text;
    seen_ += static_cast<long>(text.size());
    session_ += text;
    if (text.back() != '\n') violation("the log ends within a line: " + text);
    if (!twtest::isStamped(text)) violation("a line of the log has no time: " + text);
    if (text.find('\0') != std::string::npos) violation("the log holds a zero byte: " + text);
    for (std::size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
        require(end - at <= twtest::kLogStamp.size() + kLongestMessage,
                "a line of the log is too long");
    return text;
}

ProcessHome::ProcessHome() {
    std::filesystem::create_directory(cubes());
}

void ProcessHome::clear() {
    log.beginSession();
    for (const char* name : {"lut-folder.txt", "edit-request.json"})
        ::unlink(home.dataFile(name).c_str());
}

ProcessHome& processHome() {
    static ProcessHome instance;
    open = &instance;
    return instance;
}

int nextDescriptor() {
    const int next = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    ::close(next);
    return next;
}

}  // namespace session_fuzz
