// Metal devices, queues and buffers as the simulated host owns them, behind untyped handles.
//
// Threads: any.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace host_sim {

// One reference to an object of the system.
class MetalObject {
public:
    MetalObject() = default;
    explicit MetalObject(void* object) : object_(object) {}
    MetalObject(MetalObject&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    MetalObject& operator=(MetalObject&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~MetalObject();

    void* get() const { return object_; }

private:
    void* object_ = nullptr;
};

// All three throw SimError when there is none to be had.
MetalObject newMetalDevice();
MetalObject newMetalQueue(const MetalObject& device);
MetalObject newMetalBuffer(const MetalObject& device, const std::vector<std::uint8_t>& bytes);

// The buffer's bytes as they are now: wait for the queue first.
std::vector<std::uint8_t> metalContents(const MetalObject& buffer);

// Returns when all that was committed to the queue so far is over.
void waitForQueue(const MetalObject& queue);

}  // namespace host_sim
