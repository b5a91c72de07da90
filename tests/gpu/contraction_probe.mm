#include "tests/gpu/contraction_probe.h"

#import <Foundation/Foundation.h>
#import <Metal/Metal.h>

namespace twtest {
namespace {

constexpr char kMetal[] = "#pragma METAL fp contract(off)\n";
constexpr char kStdc[] = "#pragma STDC FP_CONTRACT OFF\n";
constexpr char kExpression[] = "v[3] = v[0] * v[1] + v[2];";
constexpr char kFma[] = "v[3] = fma(v[0], v[1], v[2]);";

struct Text {
    const char* name;
    const char* pragmas[2];
    const char* statement;
};
constexpr Text kTexts[] = {
    {"one expression", {"", ""}, kExpression},
    {"two statements", {"", ""}, "const float product = v[0] * v[1]; v[3] = product + v[2];"},
    {"METAL pragma", {kMetal, ""}, kExpression},
    {"STDC pragma", {"", kStdc}, kExpression},
    {"fma", {"", ""}, kFma},
    {"fma under both pragmas", {kMetal, kStdc}, kFma},
};

// The product's last bit is lost when it is rounded by itself: 0 then, 2^-24 when fused.
constexpr float kValues[4] = {0x1.001p0f, 0x1.001p0f, -0x1.002p0f, 1.0f};

NSString* sourceOf(const Text& text) {
    return [NSString stringWithFormat:@"#include <metal_stdlib>\nusing namespace metal;\n%s%s"
                                       "kernel void Probe(device float* v [[buffer(0)]],\n"
                                       "    uint2 at [[thread_position_in_grid]]) {\n"
                                       "    if (at.x != 0u || at.y != 0u) return;\n    %s\n}\n",
                                      text.pragmas[0], text.pragmas[1], text.statement];
}

id<MTLComputePipelineState> pipelineOf(id<MTLDevice> device, const Text& text, NSError** error) {
    MTLCompileOptions* options = [[[MTLCompileOptions alloc] init] autorelease];
    options.fastMathEnabled = NO;
    id<MTLLibrary> library = [[device newLibraryWithSource:sourceOf(text)
                                                   options:options
                                                     error:error] autorelease];
    id<MTLFunction> function = [[library newFunctionWithName:@"Probe"] autorelease];
    if (!function) return nil;
    return [[device newComputePipelineStateWithFunction:function error:error] autorelease];
}

float run(id<MTLDevice> device, id<MTLComputePipelineState> pipeline) {
    id<MTLBuffer> values = [[device newBufferWithBytes:kValues
                                                length:sizeof kValues
                                               options:MTLResourceStorageModeShared] autorelease];
    id<MTLCommandQueue> queue = [[device newCommandQueue] autorelease];
    id<MTLCommandBuffer> commands = [queue commandBuffer];
    id<MTLComputeCommandEncoder> encoder = [commands computeCommandEncoder];
    [encoder setComputePipelineState:pipeline];
    [encoder setBuffer:values offset:0 atIndex:0];
    [encoder dispatchThreadgroups:MTLSizeMake(1, 1, 1) threadsPerThreadgroup:MTLSizeMake(1, 1, 1)];
    [encoder endEncoding];
    [commands commit];
    [commands waitUntilCompleted];
    return static_cast<const float*>([values contents])[3];
}

ContractionProbe probe(id<MTLDevice> device, const Text& text) {
    ContractionProbe result{text.name, false, false, ""};
    NSError* error = nil;
    id<MTLComputePipelineState> pipeline = pipelineOf(device, text, &error);
    if (!pipeline) {
        const char* words = [[error localizedDescription] UTF8String];
        result.error = words ? words : "no pipeline";
        return result;
    }
    const float sum = run(device, pipeline);
    result.fused = sum == 0x1p-24f;
    result.ran = result.fused || sum == 0.0f;
    if (!result.ran) result.error = "the kernel gave neither result";
    return result;
}

}  // namespace

std::vector<ContractionProbe> probeContraction() {
    std::vector<ContractionProbe> results;
    @autoreleasepool {
        id<MTLDevice> device = [MTLCreateSystemDefaultDevice() autorelease];
        if (!device) return results;
        for (const Text& text : kTexts)
            results.push_back(probe(device, text));
    }
    return results;
}

}  // namespace twtest
