#include "tests/environment/small_disk.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace twtest {
namespace {

constexpr char kBallast[] = "/ballast";

std::string options() {
    return "size=" + std::to_string(16 * SmallDisk::blockSize());
}

void tellKernel(const std::string& file, const std::string& text) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) return;
    if (write(descriptor, text.data(), text.size()) < 0) std::perror(file.c_str());
    close(descriptor);
}

// Enters a user namespace as its root, unless the process is root already.
bool leaveMounts() {
    if (unshare(CLONE_NEWNS) == 0) return true;
    const std::string uid = std::to_string(geteuid()), gid = std::to_string(getegid());
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    tellKernel("/proc/self/setgroups", "deny");
    tellKernel("/proc/self/uid_map", "0 " + uid + " 1");
    tellKernel("/proc/self/gid_map", "0 " + gid + " 1");
    return true;
}

// Once a process: a mount namespace of its own.
bool hasOwnMounts() {
    static const bool own =
        leaveMounts() && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return own;
}

}  // namespace

SmallDisk::SmallDisk(const std::string& folder) : folder_(folder) {
    mounted_ = hasOwnMounts() && mount("tmpfs", folder.c_str(), "tmpfs", 0, options().c_str()) == 0;
}

SmallDisk::~SmallDisk() {
    if (mounted_) umount2(folder_.c_str(), MNT_DETACH);
}

std::size_t SmallDisk::blockSize() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void SmallDisk::fill() const {
    const std::string ballast = folder_ + kBallast;
    const int descriptor = open(ballast.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0) throw std::runtime_error("cannot fill the disk");
    const std::string block(blockSize(), '.');
    while (write(descriptor, block.data(), block.size()) > 0) {
    }
    close(descriptor);
}

void SmallDisk::makeRoom() const {
    std::filesystem::remove(folder_ + kBallast);
}

void SmallDisk::makeReadOnly() const {
    mount(nullptr, folder_.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, options().c_str());
}

}  // namespace twtest
