#include "tests/environment/privileges.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/support/temp_folder.h"

namespace twtest {
namespace {

// Sets the effective privileges and returns the former ones.
void exchange(const std::uint32_t (&wanted)[2], std::uint32_t (&before)[2]) {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct sets[2] = {};
    if (syscall(SYS_capget, &header, sets) != 0) return;
    for (int i = 0; i < 2; ++i) {
        before[i] = sets[i].effective;
        sets[i].effective = wanted[i];
    }
    syscall(SYS_capset, &header, sets);
}

}  // namespace

WithoutPrivileges::WithoutPrivileges() {
    exchange({0, 0}, before_);
}

WithoutPrivileges::~WithoutPrivileges() {
    std::uint32_t ignored[2] = {};
    exchange(before_, ignored);
}

bool WithoutPrivileges::works() const {
    const TempFolder folder;
    writeFile(folder / "locked", "");
    chmod((folder / "locked").c_str(), 0);
    const int descriptor = open((folder / "locked").c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return true;
    close(descriptor);
    return false;
}

}  // namespace twtest
