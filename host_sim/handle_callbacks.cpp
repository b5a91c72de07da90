// The handle callbacks as the effect sees them: functions without context.
#include "host_sim/handle_memory.h"
#include "host_sim/session.h"

namespace host_sim {
namespace {

PF_Handle newHandle(A_u_longlong size) {
    return Session::called().handles.allocate(size);
}

void* lockHandle(PF_Handle handle) {
    return Session::called().handles.lock(handle);
}

void unlockHandle(PF_Handle handle) {
    Session::called().handles.unlock(handle);
}

void disposeHandle(PF_Handle handle) {
    Session::called().handles.dispose(handle);
}

A_u_longlong getHandleSize(PF_Handle handle) {
    return Session::called().handles.size(handle);
}

PF_Err resizeHandle(A_u_longlong size, PF_Handle* handle) {
    return Session::called().handles.resize(size, handle);
}

}  // namespace

void fillHandleCallbacks(_PF_UtilCallbacks& table) {
    table.host_new_handle = newHandle;
    table.host_lock_handle = lockHandle;
    table.host_unlock_handle = unlockHandle;
    table.host_dispose_handle = disposeHandle;
    table.host_get_handle_size = getHandleSize;
    table.host_resize_handle = resizeHandle;
}

}  // namespace host_sim
