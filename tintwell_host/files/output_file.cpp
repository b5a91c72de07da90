#include "tintwell_host/files/output_file.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
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

PartialFile::PartialFile(const std::string& path) : path_(path), name_(partialName(path)) {}

PartialFile::~PartialFile() {
    std::error_code failed;
    fs::remove(name_, failed);
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
    std::vector<fs::path> leftovers;
    for (fs::directory_iterator entry(parent.empty() ? "." : parent, failed), end;
         !failed && entry != end; entry.increment(failed)) {
        const std::string name = entry->path().filename().string();
        if (!name.starts_with(prefix)) continue;
        const pid_t owner = std::atoi(name.c_str() + prefix.size());
        if (owner > 0 && ::kill(owner, 0) != 0 && errno == ESRCH) leftovers.push_back(*entry);
    }
    for (const fs::path& leftover : leftovers)
        fs::remove(leftover, failed);
}

}  // namespace program
