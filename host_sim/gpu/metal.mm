#include "host_sim/gpu/metal.h"

#include <string>

#import <Foundation/Foundation.h>
#import <Metal/Metal.h>

#include "host_sim/values/error.h"

namespace host_sim {
namespace {

MetalObject owned(id object, const char* what) {
    if (!object) throw SimError(std::string("There is no Metal ") + what + ".");
    return MetalObject(object);
}

}  // namespace

MetalObject::~MetalObject() {
    [static_cast<id>(object_) release];
}

MetalObject newMetalDevice() {
    return owned(MTLCreateSystemDefaultDevice(), "device");
}

MetalObject newMetalQueue(const MetalObject& device) {
    return owned([static_cast<id<MTLDevice>>(device.get()) newCommandQueue], "command queue");
}

MetalObject newMetalBuffer(const MetalObject& device, const std::vector<std::uint8_t>& bytes) {
    return owned(
        [static_cast<id<MTLDevice>>(device.get()) newBufferWithBytes:bytes.data()
                                                              length:bytes.size()
                                                             options:MTLResourceStorageModeShared],
        "buffer");
}

std::vector<std::uint8_t> metalContents(const MetalObject& buffer) {
    id<MTLBuffer> memory = static_cast<id<MTLBuffer>>(buffer.get());
    const auto* bytes = static_cast<const std::uint8_t*>([memory contents]);
    return {bytes, bytes + memory.length};
}

// Queues work in order: an empty command buffer is over when all before it are.
void waitForQueue(const MetalObject& queue) {
    @autoreleasepool {
        id<MTLCommandBuffer> last = [static_cast<id<MTLCommandQueue>>(queue.get()) commandBuffer];
        [last commit];
        [last waitUntilCompleted];
    }
}

}  // namespace host_sim
