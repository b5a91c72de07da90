// Counts of the software device once its threads are through.
#pragma once

#include <chrono>
#include <thread>

#include "software_metal/control.h"

namespace twtest {

// A queue's thread gives up its command buffer a little after the work is seen to be done. Waits
// for the expected number, two seconds at most, and returns what there is.
inline long settledLiveObjects(long expected) {
    for (int i = 0; i < 2000 && software_metal::counts().liveObjects != expected; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return software_metal::counts().liveObjects;
}

// How many there are once their number has stayed the same for some milliseconds.
inline long restingLiveObjects() {
    long live = software_metal::counts().liveObjects;
    for (int unchanged = 0; unchanged < 3; ++unchanged) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        const long now = software_metal::counts().liveObjects;
        if (now != live) unchanged = -1;
        live = now;
    }
    return live;
}

}  // namespace twtest
