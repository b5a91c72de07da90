#include "software_metal/objects.h"

#include <string>

#include "software_metal/ledger.h"

using software_metal::Faults;
using software_metal::Worker;

namespace {

// The injected error object, or none.
NSError* injected(const Faults& faults) {
    return faults.error ? softwareMetalError(*faults.error) : nil;
}

void give(NSError* error, NSError** to) {
    if (to) *to = error;
}

}  // namespace

@implementation SoftwareMetalQueue
- (id)init {
    self = [super init];
    if (self) _worker = new std::shared_ptr<Worker>(std::make_shared<Worker>());
    return self;
}
- (void)dealloc {
    delete _worker;
    [super dealloc];
}
- (id<MTLCommandBuffer>)commandBuffer {
    if (software_metal::takesFault(&Faults::noCommandBuffer)) return nil;
    software_metal::count([](software_metal::Counts& counts) { ++counts.commandBuffers; });
    return [[[SoftwareMetalCommandBuffer alloc] initWithWorker:*_worker] autorelease];
}
@end

@implementation SoftwareMetalDevice
- (NSString*)name {
    return @"Software Metal";
}
- (id<MTLCommandQueue>)newCommandQueue {
    return [[SoftwareMetalQueue alloc] init];
}
- (id<MTLBuffer>)newBufferWithBytes:(const void*)bytes
                             length:(NSUInteger)length
                            options:(MTLResourceOptions)options {
    if (software_metal::takesFault(&Faults::noBuffer)) return nil;
    if (length == 0 || options != MTLResourceStorageModeShared) {
        software_metal::misuse("a buffer without bytes, or one that is not shared");
        return nil;
    }
    software_metal::count([](software_metal::Counts& counts) { ++counts.buffers; });
    if (const auto tell = software_metal::faults().atBuffer) tell(bytes, length);
    return [[SoftwareMetalBuffer alloc] initWithBytes:bytes length:length];
}
- (id<MTLLibrary>)newLibraryWithSource:(NSString*)source
                               options:(MTLCompileOptions*)options
                                 error:(NSError**)error {
    const Faults faults = software_metal::faults();
    if (software_metal::takesFault(&Faults::noLibrary)) {
        give(injected(faults), error);
        return nil;
    }
    std::string words;
    const std::string text = faults.source.empty() ? [source UTF8String] : faults.source;
    const auto module =
        software_metal::compileKernels(text, !options || options.fastMathEnabled, &words);
    if (!module) {
        give(softwareMetalError(words), error);
        return nil;
    }
    return [[SoftwareMetalLibrary alloc] initWithModule:module];
}
- (id<MTLComputePipelineState>)newComputePipelineStateWithFunction:(id<MTLFunction>)function
                                                             error:(NSError**)error {
    if (software_metal::takesFault(&Faults::noPipeline)) {
        give(injected(software_metal::faults()), error);
        return nil;
    }
    return [[SoftwareMetalPipeline alloc]
        initWithFunction:static_cast<SoftwareMetalFunction*>(function)];
}
@end

__attribute__((visibility("default"))) id<MTLDevice> MTLCreateSystemDefaultDevice(void) {
    return [[SoftwareMetalDevice alloc] init];
}
