#include "tintwell_host/jobs/manifest.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tintwell_host/files/failure.h"
#include "tintwell_host/jobs/fingerprint.h"

namespace program {
namespace {

// Names may hold line ends; their fingerprint does not.
std::string keyOf(const std::string& file, const std::string& contents) {
    return fingerprint({std::filesystem::path(file).filename().string(), contents});
}

}  // namespace

Manifest::Manifest(const std::string& out) : path_(out + ".manifest") {}

std::string Manifest::find(const std::string& file, const std::string& contents) const {
    const std::lock_guard lock(mutex_);
    const std::string key = keyOf(file, contents);
    std::ifstream in(path_);
    std::string found;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string lineKey;
        std::string lineFingerprint;
        words >> lineKey >> lineFingerprint;
        if (lineKey == key && lineFingerprint.size() == key.size()) found = lineFingerprint;
    }
    return found;
}

void Manifest::add(const std::string& file, const std::string& contents,
                   const std::string& fingerprint) {
    const std::lock_guard lock(mutex_);
    // The line end before it keeps it apart from a line that was cut off.
    const std::string line = "\n" + keyOf(file, contents) + " " + fingerprint + "\n";
    const int descriptor = ::open(path_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    int error = descriptor < 0 ? errno : 0;
    if (descriptor >= 0) {
        ::flock(descriptor, LOCK_EX);
        const ssize_t written = ::write(descriptor, line.data(), line.size());
        if (written != static_cast<ssize_t>(line.size())) error = written < 0 ? errno : ENOSPC;
        if (::close(descriptor) != 0 && error == 0) error = errno;
    }
    if (error == 0) return;
    throw Failure("cannot write '" + path_ + "': " + std::strerror(error), exitFor(error));
}

}  // namespace program
