// What dialogs.mm needs of macOS and GNUstep does not have.
#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>
#include <dispatch/dispatch.h>

#include <cstdio>
#include <cstdlib>

// ---- The main queue

struct tw_main_queue {
    char unused;
};

@interface TintwellBlockCall : NSObject {
@public
    dispatch_block_t block;
}
- (void)run;
@end

@implementation TintwellBlockCall
- (void)run {
    block();
}
@end

dispatch_queue_t dispatch_get_main_queue(void) {
    static tw_main_queue queue;
    return &queue;
}

void dispatch_sync(dispatch_queue_t, dispatch_block_t block) {
    if ([NSThread isMainThread]) {
        std::fputs("dispatch_sync to the main queue on the main thread\n", stderr);
        std::abort();
    }
    @autoreleasepool {
        NSArray* modes =
            @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ];
        TintwellBlockCall* call = [[TintwellBlockCall alloc] init];
        call->block = block;  // stays on the caller's stack, which waits
        [call performSelectorOnMainThread:@selector(run)
                               withObject:nil
                            waitUntilDone:YES
                                    modes:modes];
        [call release];
    }
}

// ---- File types

@implementation UTType
+ (UTType*)typeWithFilenameExtension:(NSString*)extension {
    if ([extension length] == 0) return nil;
    UTType* type = [[[self alloc] init] autorelease];
    type->_extension = [extension copy];
    return type;
}
- (void)dealloc {
    [_extension release];
    [super dealloc];
}
- (NSString*)preferredFilenameExtension {
    return _extension;
}
@end

@implementation NSSavePanel (TintwellContentTypes)
- (void)setAllowedContentTypes:(NSArray*)types {
    NSMutableArray* extensions = [NSMutableArray array];
    for (UTType* type in types) {
        NSString* extension = [type preferredFilenameExtension];
        // GNUstep compares exactly; macOS ignores the case.
        [extensions addObject:[extension lowercaseString]];
        [extensions addObject:[extension uppercaseString]];
    }
    [self setAllowedFileTypes:extensions];
}
@end

@implementation NSURL (TintwellFilePath)
- (const char*)fileSystemRepresentation {
    return [self isFileURL] ? [[self path] fileSystemRepresentation] : nullptr;
}
@end
