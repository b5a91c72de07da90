#include "gpu/metal_lut.h"

#import <Foundation/Foundation.h>
#import <Metal/Metal.h>

#include "gpu/error_text.h"
#include "gpu/kernel_source.h"
#include "gpu/launch_errors.h"

#if __has_feature(objc_arc)
#error "references are counted by hand here: build without -fobjc-arc"
#endif

// Everything that a call makes for itself is handed to the pool that the call opens; only what it
// returns leaves with a reference.
namespace twmetal {

using twgpu::setErrorText;

namespace {

// The words of an error object that is valid until the caller's pool is drained.
const char* describe(NSError* error) {
    const char* text = [[error localizedDescription] UTF8String];
    return text ? text : "?";
}

id<MTLFunction> compileKernel(id<MTLDevice> device, std::string* err) {
    MTLCompileOptions* options = [[[MTLCompileOptions alloc] init] autorelease];
    // Fast maths would reorder sums and drop not-a-number: the kernel must give the picture of the
    // CPU beside it. What is left of contraction without it the kernel's own text turns off.
    options.fastMathEnabled = NO;
    NSString* source = [NSString stringWithUTF8String:twgpu::kKernelSource];
    NSError* error = nil;
    id<MTLLibrary> library = [[device newLibraryWithSource:source options:options
                                                     error:&error] autorelease];
    if (!library) {
        setErrorText(err, describe(error), "compile: ");
        return nil;
    }
    id<MTLFunction> function = [[library newFunctionWithName:@"TintwellLut"] autorelease];
    if (!function) setErrorText(err, "no TintwellLut function");
    return function;
}

void encode(id<MTLComputeCommandEncoder> encoder, id<MTLComputePipelineState> pipeline,
            void* const (&buffers)[3], const twgpu::LutKernelArgs& args) {
    [encoder setComputePipelineState:pipeline];
    for (NSUInteger i = 0; i < 3; ++i)
        [encoder setBuffer:static_cast<id<MTLBuffer>>(buffers[i]) offset:0 atIndex:i];
    [encoder setBytes:&args length:sizeof args atIndex:3];
    const auto groups = [](int pixels) { return static_cast<NSUInteger>((pixels + 15) / 16); };
    [encoder dispatchThreadgroups:MTLSizeMake(groups(args.width), groups(args.height), 1)
            threadsPerThreadgroup:MTLSizeMake(16, 16, 1)];
    [encoder endEncoding];
}

bool finish(id<MTLCommandBuffer> commands, std::string* err, double* gpuMs) {
    [commands waitUntilCompleted];
    if (commands.status == MTLCommandBufferStatusError) {
        setErrorText(err, describe(commands.error));
        return false;
    }
    if (gpuMs) *gpuMs = (commands.GPUEndTime - commands.GPUStartTime) * 1000.0;
    return true;
}

}  // namespace

void* CreatePipeline(void* deviceHandle, std::string* err) {
    @autoreleasepool {
        id<MTLDevice> device = [[static_cast<id<MTLDevice>>(deviceHandle) retain] autorelease];
        id<MTLFunction> function = compileKernel(device, err);
        if (!function) return nullptr;
        NSError* error = nil;
        id<MTLComputePipelineState> pipeline = [device newComputePipelineStateWithFunction:function
                                                                                     error:&error];
        if (!pipeline) setErrorText(err, describe(error), "pipeline: ");
        return pipeline;
    }
}

void* NewBuffer(void* device, const void* bytes, unsigned long length) {
    @autoreleasepool {
        return [static_cast<id<MTLDevice>>(device) newBufferWithBytes:bytes
                                                               length:length
                                                              options:MTLResourceStorageModeShared];
    }
}

bool Launch(void* queue, void* pipeline, void* src, void* dst, void* lut,
            const twgpu::LutKernelArgs& args, bool wait, std::string* err, double* gpuMs) {
    // A dispatch of nothing is an error there.
    if (args.width < 1 || args.height < 1) return true;
    @autoreleasepool {
        id<MTLCommandBuffer> commands = [static_cast<id<MTLCommandQueue>>(queue) commandBuffer];
        id<MTLComputeCommandEncoder> encoder = [commands computeCommandEncoder];
        if (!encoder) {
            setErrorText(err, "no command buffer");
            return false;
        }
        encode(encoder, static_cast<id<MTLComputePipelineState>>(pipeline), {src, dst, lut}, args);
        if (!wait) {
            [commands addCompletedHandler:^(id<MTLCommandBuffer> done) {
              if (done.status != MTLCommandBufferStatusError) return;
              @autoreleasepool {
                  twgpu::reportLaunchError(describe(done.error));
              }
            }];
        }
        [commands commit];
        return wait ? finish(commands, err, gpuMs) : true;
    }
}

void Release(void* object) {
    [static_cast<id>(object) release];
}

void* DefaultDevice() {
    return MTLCreateSystemDefaultDevice();
}

void* NewQueue(void* device) {
    return [static_cast<id<MTLDevice>>(device) newCommandQueue];
}

std::string DeviceName(void* device) {
    @autoreleasepool {
        const char* name = [[static_cast<id<MTLDevice>>(device) name] UTF8String];
        return name ? name : "";
    }
}

void* Contents(void* buffer) {
    return [static_cast<id<MTLBuffer>>(buffer) contents];
}

}  // namespace twmetal
