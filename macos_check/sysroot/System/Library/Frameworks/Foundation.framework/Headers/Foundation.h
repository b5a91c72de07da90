#pragma once

#include <objc/objc.h>
#include <string.h>

typedef unsigned long NSUInteger;
typedef long NSInteger;

@class NSString;

__attribute__((objc_root_class))
@interface NSObject
+ (instancetype)alloc;
- (instancetype)init;
- (instancetype)retain;
- (oneway void)release;
@end

@interface NSString : NSObject
+ (instancetype)stringWithUTF8String:(const char*)text;
@end

@interface NSArray<__covariant T> : NSObject
+ (instancetype)arrayWithObjects:(const T[])objects count:(NSUInteger)count;
@end

@interface NSURL : NSObject
+ (instancetype)fileURLWithPath:(NSString*)path isDirectory:(BOOL)directory;
- (const char*)fileSystemRepresentation;
@end

@interface NSThread : NSObject
+ (BOOL)isMainThread;
@end
