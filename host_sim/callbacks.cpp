#include "host_sim/callbacks.h"

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

PF_Err addParam(PF_ProgPtr effect, PF_ParamIndex index, PF_ParamDefPtr definition) {
    Session& session = Session::called();
    if (!session.instanceOf(effect, "add_param")) return PF_Err_BAD_CALLBACK_PARAM;
    return session.params.add(index, definition);
}

}  // namespace

_PF_UtilCallbacks utilityCallbacks() {
    _PF_UtilCallbacks table = {};
    table.host_new_handle = newHandle;
    table.host_lock_handle = lockHandle;
    table.host_unlock_handle = unlockHandle;
    table.host_dispose_handle = disposeHandle;
    table.host_get_handle_size = getHandleSize;
    table.host_resize_handle = resizeHandle;
    return table;
}

PF_InteractCallbacks interactionCallbacks() {
    PF_InteractCallbacks table = {};
    table.add_param = addParam;
    return table;
}

}  // namespace host_sim
