// Counts of the software device once its threads are through.
#pragma once

#include "software_metal/control.h"

namespace twtest {

inline long settledLiveObjects() {
    software_metal::waitUntilIdle();
    return software_metal::counts().liveObjects;
}

}  // namespace twtest
