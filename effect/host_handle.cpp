#include "effect/host_handle.h"

#include <cstring>
#include <utility>

namespace tw_effect {

LockedHandle::LockedHandle(const PF_InData& host, PF_Handle handle)
    : callbacks_(*host.utils), handle_(handle) {
    if (!handle_) return;
    size_ = static_cast<std::size_t>(callbacks_.host_get_handle_size(handle_));
    data_ = callbacks_.host_lock_handle(handle_);
}

LockedHandle::~LockedHandle() {
    if (handle_) callbacks_.host_unlock_handle(handle_);
}

OwnedHandle::OwnedHandle(const PF_InData& host, PF_Handle handle)
    : callbacks_(*host.utils), handle_(handle) {}

OwnedHandle::~OwnedHandle() {
    dispose();
}

void OwnedHandle::dispose() {
    if (const PF_Handle handle = release()) callbacks_.host_dispose_handle(handle);
}

PF_Handle OwnedHandle::release() {
    return std::exchange(handle_, nullptr);
}

void fillHandle(const PF_InData& host, PF_Handle handle, const void* bytes, std::size_t size) {
    const PF_UtilCallbacks& callbacks = *host.utils;
    if (void* block = callbacks.host_lock_handle(handle)) std::memcpy(block, bytes, size);
    callbacks.host_unlock_handle(handle);
}

PF_Handle newHandle(const PF_InData& host, const void* bytes, std::size_t size) {
    PF_Handle handle = host.utils->host_new_handle(size);
    if (handle) fillHandle(host, handle, bytes, size);
    return handle;
}

}  // namespace tw_effect
