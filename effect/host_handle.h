// Host memory: blocks that the host owns and that only its callbacks allocate, lock and free.
#pragma once

#include <cstddef>

#include "effect/effect_interface.h"

namespace tw_effect {

// A host handle, locked for a scope. data() is null when the host refused the lock or the handle is
// null, size() is then still the handle's size (0 for a null handle). A refused lock is answered
// with an unlock all the same, as hosts that count locks count the request. The bytes are valid for
// this object's life. Threads: those of the command.
class LockedHandle {
public:
    LockedHandle(const PF_InData& host, PF_Handle handle);
    ~LockedHandle();
    LockedHandle(const LockedHandle&) = delete;
    LockedHandle& operator=(const LockedHandle&) = delete;

    void* data() const { return data_; }
    std::size_t size() const { return size_; }

private:
    const PF_UtilCallbacks& callbacks_;
    PF_Handle handle_;
    std::size_t size_ = 0;
    void* data_ = nullptr;
};

// A host handle that is disposed of at the end of the scope, unless that was done or it was
// released before. Null stands for none. Threads: those of the command.
class OwnedHandle {
public:
    OwnedHandle(const PF_InData& host, PF_Handle handle);
    ~OwnedHandle();
    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;

    void dispose();
    PF_Handle release();

private:
    const PF_UtilCallbacks& callbacks_;
    PF_Handle handle_;
};

// Copies `size` bytes into a handle that holds as many. A handle that cannot be locked stays as it
// is.
void fillHandle(const PF_InData& host, PF_Handle handle, const void* bytes, std::size_t size);

// A new handle of `size` bytes holding a copy of `bytes`; the caller's, to be passed on to the
// host. Null when the host gives none. A handle that cannot be locked is returned as the host made
// it.
PF_Handle newHandle(const PF_InData& host, const void* bytes, std::size_t size);

}  // namespace tw_effect
