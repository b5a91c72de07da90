#pragma once

#include <objc/objc.h>
#include <string.h>

typedef unsigned long NSUInteger;
typedef long NSInteger;

#define NS_RETURNS_RETAINED __attribute__((ns_returns_retained))

@protocol NSObject
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
- (instancetype)init;
@end

@interface NSString : NSObject
+ (instancetype)stringWithUTF8String:(const char*)text;
- (const char*)UTF8String;
@end

@interface NSError : NSObject
- (NSString*)localizedDescription;
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
