// Shows the plug-in's two dialogs on this desktop, takes a picture of each, and answers each from
// inside the application's own modal loop. For scripts/mac; on Linux the same against GNUstep. The
// pictures go into the folder TINTWELL_PICTURES: applications take arguments for documents.
#import <AppKit/AppKit.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/mac/application.h"
#include "platform/mac/dialogs.h"

#ifdef __APPLE__
static const NSEventType kNoEvent = NSEventTypeApplicationDefined;
#else
static const NSEventType kNoEvent = NSApplicationDefined;
#endif

// Answers the modal window after it has been seen a few times: drawn by then.
@interface TintwellAnswer : NSObject {
@public
    std::string picture;
    int seen;
    bool wasPanel;
}
- (void)watch;
- (void)tick;
@end

@implementation TintwellAnswer
- (void)watch {
    for (;;) {
        usleep(50'000);
        @autoreleasepool {
            [self performSelectorOnMainThread:@selector(tick)
                                   withObject:nil
                                waitUntilDone:NO
                                        modes:@[ NSModalPanelRunLoopMode ]];
        }
    }
}
- (void)tick {
    NSWindow* window = [NSApp modalWindow];
    constexpr int kDrawn = 30;
    if (!window || ![window isVisible]) return;
    if (++seen == kDrawn) [self answer:window];
    // A modal loop looks at its state only after an event.
    [NSApp postEvent:[NSEvent otherEventWithType:kNoEvent
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0]
             atStart:NO];
}
- (void)answer:(NSWindow*)window {
    [self takePictureOf:window];
    wasPanel = [window isKindOfClass:[NSOpenPanel class]];
    if (wasPanel)
        [static_cast<NSOpenPanel*>(window) cancel:nil];
    else
        [NSApp stopModalWithCode:NSAlertFirstButtonReturn];
}
- (void)takePictureOf:(NSWindow*)window {
#ifdef __APPLE__
    const std::string number = std::to_string([window windowNumber]);
    const std::string command = "screencapture -x -o -l" + number + " '" + picture + "'";
#else
    static_cast<void>(window);
    const std::string command = "import -window root '" + picture + "'";
#endif
    if (std::system(command.c_str()) != 0) std::printf("no picture: %s\n", picture.c_str());
}
@end

namespace {

// A desktop on which nobody answers must not keep the script waiting.
constexpr unsigned kSeconds = 60;

bool show(TintwellAnswer* answer, const std::string& picture, bool panel) {
    answer->picture = picture;
    answer->seen = 0;
    alarm(kSeconds);
    if (panel) {
        const std::string chosen = tw_mac::PickCube("");
        if (!chosen.empty()) std::printf("the panel gave a file after Cancel\n");
    } else {
        tw_mac::Alert("A picture of this is being taken.", true);
    }
    alarm(0);
    const bool right = answer->seen > 0 && answer->wasPanel == panel;
    std::printf("%s: %s\n", panel ? "open panel" : "alert",
                right ? "shown and answered" : "not answered as expected");
    return right;
}

}  // namespace

int main() {
    const char* folder = std::getenv("TINTWELL_PICTURES");
    if (!folder) {
        std::fputs("show_dialogs: TINTWELL_PICTURES names no folder\n", stderr);
        return 2;
    }
    @autoreleasepool {
        if (!tw_mac::BecomeApplication()) {
            std::fputs("show_dialogs: there is no screen\n", stderr);
            return 1;
        }
#ifdef __APPLE__
        [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
        [NSApp activateIgnoringOtherApps:YES];
#endif
        TintwellAnswer* answer = [[TintwellAnswer alloc] init];
        [NSThread detachNewThreadSelector:@selector(watch) toTarget:answer withObject:nil];
        const bool panel = show(answer, std::string(folder) + "/open-panel.png", true);
        const bool alert = show(answer, std::string(folder) + "/alert.png", false);
        return panel && alert ? 0 : 1;
    }
}
