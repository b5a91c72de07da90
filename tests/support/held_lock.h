// Access to the lock check of the module TintwellStandIn.
#pragma once

// Name of a lock of the module that the calling thread holds; null: none, or locks are not checked.
extern "C" const char* tintwell_held_lock();
