#include "tests/support/held_lock.h"

#include "native/src/export.h"
#include "native/src/mutex.h"

extern "C" TW_EXPORT const char* tintwell_held_lock() {
#ifdef TINTWELL_CHECK_LOCKS
    return tw::heldLock();
#else
    return nullptr;
#endif
}
