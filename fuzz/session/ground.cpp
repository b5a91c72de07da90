#include "fuzz/session/ground.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "fuzz/session/violation.h"

namespace session_fuzz {
namespace {

constexpr long kLongLog = 1 << 20;
constexpr std::string_view kStamp = "dddd-dd-dd dd:dd:dd  ";
constexpr std::size_t kLongestMessage = 1023;

std::string step;
const Ground* open = nullptr;

bool beginsWithTime(std::string_view line) {
    if (line.size() < kStamp.size()) return false;
    for (std::size_t i = 0; i < kStamp.size(); ++i) {
        const bool isDigit = line[i] >= '0' && line[i] <= '9';
        if (kStamp[i] == 'd' ? !isDigit : line[i] != kStamp[i]) return false;
    }
    return true;
}

}  // namespace

void nowPlaying(const std::string& name) {
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

void LogWatch::shorten() {
    if (seen_ < kLongLog) return;
    require(::ftruncate(file_, 0) == 0, "the log cannot be emptied");
    seen_ = 0;
}

std::string LogWatch::added() {
    struct stat status;
    require(::fstat(file_, &status) == 0 && status.st_size >= seen_, "the log has shrunk");
    std::string text(static_cast<std::size_t>(status.st_size - seen_), '\0');
    const ssize_t count = ::pread(file_, text.data(), text.size(), seen_);
    require(count == static_cast<ssize_t>(text.size()), "the log cannot be read");
    seen_ = status.st_size;
    if (text.empty()) return text;
    if (text.back() != '\n') violation("the log ends within a line: " + text);
    if (!beginsWithTime(text)) violation("a line of the log has no time: " + text);
    if (text.find('\0') != std::string::npos) violation("the log holds a zero byte: " + text);
    for (std::size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
        require(end - at <= kStamp.size() + kLongestMessage, "a line of the log is too long");
    return text;
}

Ground::Ground() {
    std::filesystem::create_directory(cubes());
}

void Ground::clear() {
    log.shorten();
    for (const char* name : {"lut-folder.txt", "edit-request.json"})
        ::unlink(home.dataFile(name).c_str());
}

Ground& ground() {
    static Ground instance;
    open = &instance;
    return instance;
}

int nextDescriptor() {
    const int next = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    ::close(next);
    return next;
}

}  // namespace session_fuzz
