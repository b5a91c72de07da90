// The software device itself: what it does with commands, and the misuse that it must see.
#import <Metal/Metal.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "software_metal/control.h"
#include "tests/software_metal/settled.h"

namespace {

using software_metal::takeMisuse;

// Writes each thread's place, counted row by row in a grid 32 wide, into its own float.
constexpr char kPlaces[] = "kernel void Places(device float* out [[buffer(0)]],\n"
                           "                   uint2 at [[thread_position_in_grid]]) {\n"
                           "    out[at.y * 32u + at.x] = float(at.y * 32u + at.x);\n"
                           "}\n";

class SoftwareDevice : public testing::Test {
protected:
    SoftwareDevice() {
        pool_ = [[NSAutoreleasePool alloc] init];
        device_ = MTLCreateSystemDefaultDevice();
        queue_ = [device_ newCommandQueue];
        id<MTLLibrary> library = [[device_ newLibraryWithSource:@(kPlaces)
                                                        options:nil
                                                          error:nullptr] autorelease];
        id<MTLFunction> function = [[library newFunctionWithName:@"Places"] autorelease];
        pipeline_ = [device_ newComputePipelineStateWithFunction:function error:nullptr];
        const std::vector<float> zeros(32 * 32);
        buffer_ = [device_ newBufferWithBytes:zeros.data()
                                       length:zeros.size() * sizeof(float)
                                      options:MTLResourceStorageModeShared];
        commands_ = [queue_ commandBuffer];
    }

    void TearDown() override {
        [buffer_ release];
        [pipeline_ release];
        [queue_ release];
        [device_ release];
        [pool_ release];
        EXPECT_EQ(twtest::settledLiveObjects(), 0);
    }

    id<MTLComputeCommandEncoder> encoder() {
        id<MTLComputeCommandEncoder> encoder = [commands_ computeCommandEncoder];
        [encoder setComputePipelineState:pipeline_];
        [encoder setBuffer:buffer_ offset:0 atIndex:0];
        return encoder;
    }

    static void dispatch(id<MTLComputeCommandEncoder> encoder, NSUInteger groups = 2) {
        [encoder dispatchThreadgroups:MTLSizeMake(groups, groups, 1)
                threadsPerThreadgroup:MTLSizeMake(16, 16, 1)];
    }

    void finish() {
        [commands_ commit];
        [commands_ waitUntilCompleted];
    }

    NSAutoreleasePool* pool_;
    id<MTLDevice> device_;
    id<MTLCommandQueue> queue_;
    id<MTLComputePipelineState> pipeline_;
    id<MTLBuffer> buffer_;
    id<MTLCommandBuffer> commands_;
};

TEST_F(SoftwareDevice, runsEveryThreadOnce) {
    id<MTLComputeCommandEncoder> commands = encoder();
    dispatch(commands);
    [commands endEncoding];
    finish();
    const auto* places = static_cast<const float*>([buffer_ contents]);
    for (int i = 0; i < 32 * 32; ++i)
        ASSERT_EQ(places[i], static_cast<float>(i));
    EXPECT_EQ(commands_.status, MTLCommandBufferStatusCompleted);
    EXPECT_GE(commands_.GPUEndTime, commands_.GPUStartTime);
    EXPECT_EQ(takeMisuse(), "");
}

TEST_F(SoftwareDevice, callsHandlersBeforeAWaitIsOver) {
    __block MTLCommandBufferStatus seen = MTLCommandBufferStatusNotEnqueued;
    [commands_ addCompletedHandler:^(id<MTLCommandBuffer> done) {
      seen = done.status;
    }];
    finish();
    EXPECT_EQ(seen, MTLCommandBufferStatusCompleted);
    EXPECT_EQ(takeMisuse(), "");
}

TEST_F(SoftwareDevice, compilesWithFastMaths_unlessToldOtherwise) {
    EXPECT_TRUE(software_metal::counts().lastFastMaths);
}

TEST_F(SoftwareDevice, keepsWhatItCompiled) {
    const software_metal::Counts before = software_metal::counts();
    id<MTLLibrary> again = [[device_ newLibraryWithSource:@(kPlaces) options:nil
                                                    error:nullptr] autorelease];
    EXPECT_NE([[again newFunctionWithName:@"Places"] autorelease], nil);
    EXPECT_EQ(software_metal::counts().compilations, before.compilations + 1);
    EXPECT_EQ(software_metal::counts().lastCompileMs, before.lastCompileMs);
}

TEST_F(SoftwareDevice, failsTheNthCallOnly_whenToldSo) {
    software_metal::Faults faults;
    faults.noCommandBuffer = true;
    faults.nth = 2;
    software_metal::setFaults(faults);
    EXPECT_NE([queue_ commandBuffer], nil);
    EXPECT_TRUE(software_metal::isFaultDue());
    EXPECT_EQ([queue_ commandBuffer], nil);
    EXPECT_FALSE(software_metal::isFaultDue());
    EXPECT_NE([queue_ commandBuffer], nil);
    software_metal::setFaults({});
}

TEST_F(SoftwareDevice, refusesAKernelThatReturnsAValue) {
    NSError* error = nil;
    NSString* text = @"kernel float K(device float* p [[buffer(0)]]) { return p[0]; }\n";
    EXPECT_EQ([device_ newLibraryWithSource:text options:nil error:&error], nil);
    EXPECT_STREQ([[error localizedDescription] UTF8String],
                 "program_source: error: kernel K must return void\n");
}

TEST_F(SoftwareDevice, refusesAParameterWithoutAnAttribute) {
    NSError* error = nil;
    NSString* text = @"kernel void K(device float* p) { p[0] = 1.0f; }\n";
    EXPECT_EQ([device_ newLibraryWithSource:text options:nil error:&error], nil);
    EXPECT_STREQ([[error localizedDescription] UTF8String],
                 "program_source: error: kernel K: parameter without a known attribute:"
                 "device float* p\n");
}

TEST_F(SoftwareDevice, seesACommitWithAnOpenEncoder) {
    id<MTLComputeCommandEncoder> open = encoder();
    finish();
    EXPECT_EQ(takeMisuse(), "a commit with an open encoder\n");
    [open endEncoding];
}

TEST_F(SoftwareDevice, seesASecondEncoderWhileOneIsOpen) {
    id<MTLComputeCommandEncoder> first = encoder();
    id<MTLComputeCommandEncoder> second = encoder();
    EXPECT_EQ(takeMisuse(), "a second encoder while one is open\n");
    [first endEncoding];
    [second endEncoding];
}

TEST_F(SoftwareDevice, seesAnEncoderUsedAfterItsEnd) {
    id<MTLComputeCommandEncoder> ended = encoder();
    [ended endEncoding];
    dispatch(ended);
    EXPECT_EQ(takeMisuse(), "an encoder used after endEncoding\n");
}

TEST_F(SoftwareDevice, seesAnEncoderThatIsNeverEnded) {
    {
        NSAutoreleasePool* inner = [[NSAutoreleasePool alloc] init];
        encoder();
        [inner release];
    }
    EXPECT_EQ(takeMisuse(), "an encoder released without endEncoding\n");
}

TEST_F(SoftwareDevice, seesADispatchWithoutAPipeline) {
    id<MTLComputeCommandEncoder> bare = [commands_ computeCommandEncoder];
    dispatch(bare);
    EXPECT_EQ(takeMisuse(), "a dispatch without a pipeline\n");
    [bare endEncoding];
}

TEST_F(SoftwareDevice, seesAMissingBuffer) {
    id<MTLComputeCommandEncoder> commands = encoder();
    [commands setBuffer:nil offset:0 atIndex:0];
    dispatch(commands);
    EXPECT_EQ(takeMisuse(), "nothing bound at index 0\n");
    [commands endEncoding];
}

TEST_F(SoftwareDevice, seesADispatchOfNothing) {
    id<MTLComputeCommandEncoder> commands = encoder();
    dispatch(commands, 0);
    EXPECT_EQ(takeMisuse(), "a dispatch of a bad size\n");
    [commands endEncoding];
}

TEST_F(SoftwareDevice, seesBindingsOutOfRange) {
    id<MTLComputeCommandEncoder> commands = encoder();
    [commands setBuffer:buffer_ offset:buffer_.length atIndex:0];
    [commands setBytes:"x" length:5000 atIndex:1];
    EXPECT_EQ(takeMisuse(), "a buffer bound out of range\ninline bytes of a bad index or length\n");
    [commands endEncoding];
}

TEST_F(SoftwareDevice, seesAHandlerAfterTheCommit) {
    [commands_ commit];
    [commands_ waitUntilCompleted];
    [commands_ addCompletedHandler:^(id<MTLCommandBuffer>){
    }];
    EXPECT_EQ(takeMisuse(), "a handler after the commit\n");
}

TEST_F(SoftwareDevice, seesASecondCommit) {
    finish();
    [commands_ commit];
    EXPECT_EQ(takeMisuse(), "a second commit\n");
}

TEST_F(SoftwareDevice, seesAWaitBeforeTheCommit) {
    [commands_ waitUntilCompleted];
    EXPECT_EQ(takeMisuse(), "a wait before the commit\n");
}

TEST_F(SoftwareDevice, seesABufferWithoutBytes) {
    EXPECT_EQ([device_ newBufferWithBytes:"" length:0 options:MTLResourceStorageModeShared], nil);
    EXPECT_EQ(takeMisuse(), "a buffer without bytes, or one that is not shared\n");
}

}  // namespace
