#include "tintwell_host/files/output_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>
#include <vector>

#include "tintwell_host/files/failure.h"

namespace program {
namespace {

namespace fs = std::filesystem;

constexpr char kPartial[] = ".partial-";

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

// The file with nobody else's lock on it, and ours taken; -1 when that cannot be had.
int lockAlone(const fs::path& file, int flags) {
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CLOEXEC | flags, 0666);
    if (descriptor >= 0 && ::flock(descriptor, LOCK_EX | LOCK_NB) == 0) return descriptor;
    if (descriptor >= 0) ::close(descriptor);
    return -1;
}

bool isGone(int descriptor) {
    struct stat facts = {};
    return ::fstat(descriptor, &facts) != 0 || facts.st_nlink == 0;
}

[[noreturn]] void fail(const char* what, const std::string& path, int error) {
    throw Failure(std::string("cannot ") + what + " '" + path + "': " + std::strerror(error),
                  exitFor(error));
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
        throw Failure("cannot read '" + path + "': it is a folder");
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) fail("read", path, errno);
    std::string text = readStream(in);
    if (in.bad()) fail("read", path, errno);
    return text;
}

void writeWhole(const std::string& path, std::string_view bytes) {
    PartialFile partial(path);
    std::ofstream out(partial.name(), std::ios::binary);
    if (!out) fail("write", path, errno);
    out << bytes;
    // Some disks tell only now that they are full.
    out.close();
    if (!out) fail("write", path, errno);
    partial.keep();
}

PartialFile::PartialFile(const std::string& path)
    : path_(path), name_(partialName(path)), lock_(lockAlone(name_, O_CREAT)) {
    // Somebody who tidies up may come between making the file and locking it.
    while (lock_ >= 0 && isGone(lock_)) {
        ::close(lock_);
        name_ = partialName(path);
        lock_ = lockAlone(name_, O_CREAT);
    }
}

PartialFile::~PartialFile() {
    std::error_code failed;
    fs::remove(name_, failed);
    if (lock_ >= 0) ::close(lock_);
}

void PartialFile::keep() {
    std::error_code failed;
    fs::rename(name_, path_, failed);
    if (failed) fail("write", path_, failed.value());
}

void removeLeftovers(const std::string& path) {
    const fs::path parent = fs::path(path).parent_path();
    const std::string prefix = ownPrefix();
    std::error_code failed;
    std::vector<fs::path> partial;
    for (fs::directory_iterator entry(parent.empty() ? "." : parent, failed), end;
         !failed && entry != end; entry.increment(failed)) {
        std::error_code unknown;
        const bool isFile = fs::is_regular_file(entry->symlink_status(unknown));
        if (isFile && entry->path().filename().string().starts_with(prefix))
            partial.push_back(*entry);
    }
    for (const fs::path& file : partial) {
        const int lock = lockAlone(file, 0);
        if (lock < 0) continue;
        fs::remove(file, failed);
        ::close(lock);
    }
}

}  // namespace program
