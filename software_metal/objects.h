// The device's Objective-C classes. Their state is plain C++ behind a pointer: the runtime does not
// construct C++ members.
#pragma once

#import <Metal/Metal.h>

#include <memory>

#include "software_metal/compiler.h"
#include "software_metal/worker.h"

// Counted among the live objects. Keeps its own count of references, because one that this library
// is compiled with is one that a thread checker can follow.
@interface SoftwareMetalObject : NSObject {
    long _references;
}
@end

@interface SoftwareMetalBuffer : SoftwareMetalObject <MTLBuffer> {
    void* _memory;
    NSUInteger _length;
}
// The storage has exactly this size, so that a memory checker sees an access past it.
- (id)initWithBytes:(const void*)bytes length:(NSUInteger)length;
@end

@interface SoftwareMetalFunction : SoftwareMetalObject <MTLFunction> {
    std::shared_ptr<const software_metal::KernelModule>* _module;
    const software_metal::Kernel* _kernel;
}
- (id)initWithModule:(const std::shared_ptr<const software_metal::KernelModule>&)module
              kernel:(const software_metal::Kernel*)kernel;
- (const std::shared_ptr<const software_metal::KernelModule>&)module;
- (const software_metal::Kernel*)kernel;
@end

@interface SoftwareMetalLibrary : SoftwareMetalObject <MTLLibrary> {
    std::shared_ptr<const software_metal::KernelModule>* _module;
}
- (id)initWithModule:(const std::shared_ptr<const software_metal::KernelModule>&)module;
@end

@interface SoftwareMetalPipeline : SoftwareMetalObject <MTLComputePipelineState> {
    SoftwareMetalFunction* _function;
}
- (id)initWithFunction:(SoftwareMetalFunction*)function;
- (SoftwareMetalFunction*)function;
@end

@interface SoftwareMetalQueue : SoftwareMetalObject <MTLCommandQueue> {
    std::shared_ptr<software_metal::Worker>* _worker;
}
@end

@interface SoftwareMetalDevice : SoftwareMetalObject <MTLDevice>
@end

// Of one queue, whose thread is kept alive by it.
@interface SoftwareMetalCommandBuffer : SoftwareMetalObject <MTLCommandBuffer> {
    struct SoftwareMetalCommands* _commands;
    std::shared_ptr<software_metal::Worker>* _worker;
}
- (id)initWithWorker:(const std::shared_ptr<software_metal::Worker>&)worker;
@end

// An autoreleased error object with this description.
NSError* softwareMetalError(const std::string& description);
