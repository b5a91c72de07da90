// What the loaded module TintwellStandIn exports for tests.
#pragma once

#include "host_sim/module.h"
#include "tests/support/held_lock.h"
#include "tests/support/stand_in_dialogs.h"

namespace twtest {

inline StandInDialogs& dialogsOf(const host_sim::Module& module) {
    void* const symbol = module.symbol("tintwell_stand_in_dialogs");
    return *reinterpret_cast<decltype(&tintwell_stand_in_dialogs)>(symbol)();
}

inline decltype(&tintwell_held_lock) heldLockOf(const host_sim::Module& module) {
    return reinterpret_cast<decltype(&tintwell_held_lock)>(module.symbol("tintwell_held_lock"));
}

}  // namespace twtest
