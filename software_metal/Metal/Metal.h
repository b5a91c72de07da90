// The part of the Metal framework that the plug-in and the simulated host use, declared in our own
// words for the software device. Selectors, types and numbers are the framework's, so that sources
// written against the one compile against the other.
#pragma once

#import <Foundation/Foundation.h>

typedef double CFTimeInterval;  // seconds

typedef struct {
    NSUInteger width, height, depth;
} MTLSize;

static inline MTLSize MTLSizeMake(NSUInteger width, NSUInteger height, NSUInteger depth) {
    MTLSize size = {width, height, depth};
    return size;
}

typedef enum : NSUInteger {
    MTLResourceStorageModeShared = 0,
    MTLResourceStorageModePrivate = 2 << 4,
} MTLResourceOptions;

typedef enum : NSUInteger {
    MTLCommandBufferStatusNotEnqueued = 0,
    MTLCommandBufferStatusEnqueued = 1,
    MTLCommandBufferStatusCommitted = 2,
    MTLCommandBufferStatusScheduled = 3,
    MTLCommandBufferStatusCompleted = 4,
    MTLCommandBufferStatusError = 5,
} MTLCommandBufferStatus;

@protocol MTLCommandBuffer;
typedef void (^MTLCommandBufferHandler)(id<MTLCommandBuffer>);

@interface MTLCompileOptions : NSObject {
    BOOL _fastMathEnabled;
}
@property(nonatomic) BOOL fastMathEnabled;  // YES unless switched off
@end

@protocol MTLBuffer <NSObject>
@property(readonly) NSUInteger length;
- (void*)contents;
@end

@protocol MTLFunction <NSObject>
@property(readonly) NSString* name;
@end

@protocol MTLLibrary <NSObject>
- (id<MTLFunction>)newFunctionWithName:(NSString*)name;
@end

@protocol MTLComputePipelineState <NSObject>
@property(readonly) NSUInteger maxTotalThreadsPerThreadgroup;
@end

@protocol MTLComputeCommandEncoder <NSObject>
- (void)setComputePipelineState:(id<MTLComputePipelineState>)state;
- (void)setBuffer:(id<MTLBuffer>)buffer offset:(NSUInteger)offset atIndex:(NSUInteger)index;
- (void)setBytes:(const void*)bytes length:(NSUInteger)length atIndex:(NSUInteger)index;
- (void)dispatchThreadgroups:(MTLSize)groups threadsPerThreadgroup:(MTLSize)threads;
- (void)endEncoding;
@end

@protocol MTLCommandBuffer <NSObject>
@property(readonly) MTLCommandBufferStatus status;
@property(readonly) NSError* error;
@property(readonly) CFTimeInterval GPUStartTime;
@property(readonly) CFTimeInterval GPUEndTime;
- (id<MTLComputeCommandEncoder>)computeCommandEncoder;
- (void)addCompletedHandler:(MTLCommandBufferHandler)block;
- (void)commit;
- (void)waitUntilCompleted;
@end

@protocol MTLCommandQueue <NSObject>
- (id<MTLCommandBuffer>)commandBuffer;
@end

@protocol MTLDevice <NSObject>
@property(readonly) NSString* name;
- (id<MTLCommandQueue>)newCommandQueue;
- (id<MTLBuffer>)newBufferWithBytes:(const void*)bytes
                             length:(NSUInteger)length
                            options:(MTLResourceOptions)options;
- (id<MTLLibrary>)newLibraryWithSource:(NSString*)source
                               options:(MTLCompileOptions*)options
                                 error:(NSError**)error;
- (id<MTLComputePipelineState>)newComputePipelineStateWithFunction:(id<MTLFunction>)function
                                                             error:(NSError**)error;
@end

extern "C" id<MTLDevice> MTLCreateSystemDefaultDevice(void);
