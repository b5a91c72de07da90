// A handle of the compute backend with an owner.
#pragma once

#include <utility>

#include "gpu/metal_lut.h"

namespace twgpu {

// Owns one reference to an object of the device, or none, and gives it up at the end. Threads: one
// at a time.
class BackendObject {
public:
    BackendObject() = default;
    explicit BackendObject(void* handle) : handle_(handle) {}
    ~BackendObject() { twmetal::Release(handle_); }
    BackendObject(const BackendObject&) = delete;
    BackendObject& operator=(const BackendObject&) = delete;
    BackendObject(BackendObject&& other) noexcept
        : handle_(std::exchange(other.handle_, nullptr)) {}
    BackendObject& operator=(BackendObject&& other) noexcept {
        reset();
        std::swap(handle_, other.handle_);
        return *this;
    }

    void reset() { twmetal::Release(std::exchange(handle_, nullptr)); }
    void* get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    void* handle_ = nullptr;
};

}  // namespace twgpu
