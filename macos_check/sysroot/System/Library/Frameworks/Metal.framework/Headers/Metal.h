#pragma once

#include <Foundation/Foundation.h>

typedef struct {
    NSUInteger width, height, depth;
} MTLSize;
static inline MTLSize MTLSizeMake(NSUInteger width, NSUInteger height, NSUInteger depth) {
    MTLSize size = {width, height, depth};
    return size;
}

enum MTLResourceOptions : NSUInteger { MTLResourceStorageModeShared = 0 };
enum MTLCommandBufferStatus : NSUInteger { MTLCommandBufferStatusError = 5 };

@interface MTLCompileOptions : NSObject
@property BOOL fastMathEnabled;
@end

@protocol MTLFunction <NSObject>
@end

@protocol MTLLibrary <NSObject>
- (id<MTLFunction>)newFunctionWithName:(NSString*)name;
@end

@protocol MTLBuffer <NSObject>
@property(readonly) NSUInteger length;
- (void*)contents;
@end

@protocol MTLComputePipelineState <NSObject>
@end

@protocol MTLComputeCommandEncoder <NSObject>
- (void)setComputePipelineState:(id<MTLComputePipelineState>)pipeline;
- (void)setBuffer:(id<MTLBuffer>)buffer offset:(NSUInteger)offset atIndex:(NSUInteger)index;
- (void)setBytes:(const void*)bytes length:(NSUInteger)length atIndex:(NSUInteger)index;
- (void)dispatchThreadgroups:(MTLSize)groups threadsPerThreadgroup:(MTLSize)threads;
- (void)endEncoding;
@end

@protocol MTLCommandBuffer;
typedef void (^MTLCommandBufferHandler)(id<MTLCommandBuffer>);

@protocol MTLCommandBuffer <NSObject>
@property(readonly) MTLCommandBufferStatus status;
@property(readonly) NSError* error;
@property(readonly) double GPUStartTime;
@property(readonly) double GPUEndTime;
- (id<MTLComputeCommandEncoder>)computeCommandEncoder;
- (void)addCompletedHandler:(MTLCommandBufferHandler)handler;
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

#ifdef __cplusplus
extern "C"
#endif
    id<MTLDevice>
    MTLCreateSystemDefaultDevice(void) NS_RETURNS_RETAINED;
