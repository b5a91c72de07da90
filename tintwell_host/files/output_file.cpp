#include "tintwell_host/files/output_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <system_error>
#include <vector>

#include "tintwell_host/files/failure.h"

namespace program {
namespace {

namespace fs = std::filesystem;

constexpr char kPartial[] = ".partial-";

// Where a file system tells a file's number differently each time, no name would ever do.
constexpr int kMostNames = 100;

// Machines may share the folder.
std::string ownPrefix() {
    char host[64] = "";
    ::gethostname(host, sizeof host - 1);
    return std::string(kPartial) + host + "-";
}

// Without the file's own name, which may be as long as names can be.
fs::path partialName(const fs::path& path) {
    static std::atomic<unsigned> written{0};
    return path.parent_path() /
           (ownPrefix() + std::to_string(::getpid()) + "-" + std::to_string(written++));
}

// Whether it is of this process, or of another on a machine of this name. Names of machines may go
// on where this one's ends.
bool isOwn(const std::string& name) {
    const std::string prefix = ownPrefix();
    if (!name.starts_with(prefix)) return false;
    const std::string numbers = name.substr(prefix.size());
    return std::ranges::count(numbers, '-') == 1 &&
           numbers.find_first_not_of("-0123456789") == std::string::npos;
}

// Whether the name still stands for the open file.
bool isStill(const fs::path& name, int descriptor) {
    struct stat named = {};
    struct stat opened = {};
    return ::stat(name.c_str(), &named) == 0 && ::fstat(descriptor, &opened) == 0 &&
           named.st_ino == opened.st_ino && named.st_dev == opened.st_dev;
}

bool isPlain(int descriptor) {
    struct stat facts = {};
    return ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode);
}

// The file with nobody else's lock on it, and ours taken; -1 when that cannot be had. Nothing when
// the name is somebody else's.
std::optional<int> lockAlone(const fs::path& file, int flags) {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666);
    const bool isLocked = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    const bool isOthers =
        isLocked ? !isStill(file, descriptor) : errno == EWOULDBLOCK && isPlain(descriptor);
    if (isLocked && !isOthers) return descriptor;
    if (descriptor >= 0) ::close(descriptor);
    return isOthers ? std::nullopt : std::optional(-1);
}

[[noreturn]] void failWriting(const std::string& path, int error) {
    throw Failure("cannot write '" + path + "': " + std::strerror(error), exitFor(error));
}

std::string readStream(std::istream& in) {
    std::string text;
    std::vector<char> buffer(1 << 16);
    while (in.read(buffer.data(), 1 << 16), in.gcount() > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(in.gcount()));
    }
    return text;
}

}  // namespace

std::string readText(const std::string& path) {
    if (path == "-") return readStream(std::cin);
    std::error_code unknown;
    if (fs::is_directory(path, unknown)) {
        throw Unreadable(path, "it is a folder");
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) throw Unreadable(path, errno);
    std::string text = readStream(in);
    if (in.bad()) throw Unreadable(path, errno);
    return text;
}

void writeWhole(const std::string& path, std::string_view bytes) {
    PartialFile partial(path);
    std::ofstream out(partial.name(), std::ios::binary);
    if (!out) failWriting(path, errno);
    out << bytes;
    // Some disks tell only now that they are full.
    out.close();
    if (!out) failWriting(path, errno);
    partial.keep();
}

PartialFile::PartialFile(const std::string& path) : path_(path) {
    // Somebody who tidies up may come between making the file and locking it, and processes in
    // containers can have one machine's name and the same number.
    std::optional<int> lock;
    for (int tries = 0; !lock && tries < kMostNames; ++tries) {
        name_ = partialName(path);
        lock = lockAlone(name_, O_CREAT);
    }
    lock_ = lock.value_or(-1);
}

PartialFile::~PartialFile() {
    std::error_code failed;
    if (!isKept_) fs::remove(name_, failed);
    if (lock_ >= 0) ::close(lock_);
}

void PartialFile::keep() {
    std::error_code failed;
    fs::rename(name_, path_, failed);
    if (failed) failWriting(path_, failed.value());
    isKept_ = true;
}

void removeLeftovers(const std::string& path) {
    const fs::path parent = fs::path(path).parent_path();
    std::error_code failed;
    std::vector<fs::path> partial;
    for (fs::directory_iterator entry(parent.empty() ? "." : parent, failed), end;
         !failed && entry != end; entry.increment(failed)) {
        std::error_code unknown;
        const bool isFile = fs::is_regular_file(entry->symlink_status(unknown));
        if (isFile && isOwn(entry->path().filename().string())) partial.push_back(*entry);
    }
    for (const fs::path& file : partial) {
        const int lock = lockAlone(file, 0).value_or(-1);
        if (lock < 0) continue;
        fs::remove(file, failed);
        ::close(lock);
    }
}

}  // namespace program
