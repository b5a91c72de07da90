#include "gpu/launch_errors.h"

#include <atomic>

#include "native/src/log.h"

namespace twgpu {

void reportLaunchError(const char* description) noexcept {
    constexpr int kLogged = 5;
    static std::atomic<int> errors{0};
    if (errors.fetch_add(1) >= kLogged) return;
    try {
        tw::logLine("GPU: Metal launch failed: %s", description);
    } catch (...) {
        // The line is lost; the frame is lost already.
    }
}

}  // namespace twgpu
