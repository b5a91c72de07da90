#include "platform/mac/application.h"

#import <AppKit/AppKit.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>

@interface TintwellFirstThread : NSObject
+ (void)run:(NSValue*)ran;
@end

@implementation TintwellFirstThread
+ (void)run:(NSValue*)ran {
    *static_cast<std::atomic<bool>*>([ran pointerValue]) = true;
}
@end

namespace tw_mac {
namespace {

// GNUstep exchanges its locks for real ones when the first thread is detached. Should that happen
// while the main thread draws, it would unlock what it never locked.
void becomeMultiThreaded() {
    std::atomic<bool> ran{false};
    [NSThread detachNewThreadSelector:@selector(run:)
                             toTarget:[TintwellFirstThread class]
                           withObject:[NSValue valueWithPointer:&ran]];
    while (!ran)
        usleep(1000);
}

// AppKit's own handler shows one more modal panel, which nobody may be there to close.
void endProcess(NSException* exception) {
    std::fprintf(stderr, "uncaught %s: %s\n", [[exception name] UTF8String],
                 [[exception reason] UTF8String]);
    _exit(70);
}

}  // namespace

bool BecomeApplication() {
    @autoreleasepool {
        // Known to GNUstep only: windows of its own, whether or not a window manager runs, and no
        // icon window beside them.
        [[NSUserDefaults standardUserDefaults] registerDefaults:@{
            @"GSX11HandlesWindowDecorations" : @NO,
            @"GSSuppressAppIcon" : @YES,
        }];
        becomeMultiThreaded();
        @try {
            [NSApplication sharedApplication];
        } @catch (NSException* noScreen) {
            return false;
        }
        [NSApp finishLaunching];
        NSSetUncaughtExceptionHandler(endProcess);
        return true;
    }
}

}  // namespace tw_mac
