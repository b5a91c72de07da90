#include "gpu/error_text.h"

#include <new>

namespace twgpu {

void setErrorText(std::string* err, const char* reason, const char* stage) noexcept {
    if (!err) return;
    err->clear();
    try {
        *err = std::string(stage) + reason;
    } catch (const std::bad_alloc&) {
        // The call fails all the same.
    }
}

}  // namespace twgpu
