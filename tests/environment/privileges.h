// Permissions that hold for root too.
#pragma once

#include <cstdint>

namespace twtest {

// While it lives, the calling thread has none of root's privileges, so that it cannot read, write
// or enter what the permissions deny to the owner. For other users nothing changes.
class WithoutPrivileges {
public:
    WithoutPrivileges();
    ~WithoutPrivileges();
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;

    // Whether permissions are enforced: some file systems and sandboxes ignore them.
    bool works() const;

private:
    std::uint32_t before_[2] = {};
};

}  // namespace twtest
