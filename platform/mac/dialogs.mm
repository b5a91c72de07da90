#include "platform/mac/dialogs.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>
#include <dispatch/dispatch.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#if __has_feature(objc_arc)
#error "Manual reference counting: compile without -fobjc-arc"
#endif

namespace tw_mac {
namespace {

// The main queue would wait for itself if it were asked from its own thread.
void onMainThread(dispatch_block_t body) {
    if ([NSThread isMainThread]) {
        body();
    } else {
        dispatch_sync(dispatch_get_main_queue(), body);
    }
}

void describe(NSOpenPanel* panel) {
    [panel setTitle:@"Tintwell: choose a LUT"];
    [panel setMessage:@"Choose a .cube LUT to store in this Tintwell effect."];
    [panel setCanChooseFiles:YES];
    [panel setCanChooseDirectories:NO];
    [panel setAllowsMultipleSelection:NO];
    // Unrestricted where the system has no type for the extension: better all files than none.
    UTType* cube = [UTType typeWithFilenameExtension:@"cube"];
    if (cube) [panel setAllowedContentTypes:@[ cube ]];
}

void openIn(NSOpenPanel* panel, const char* folder) {
    NSString* path = *folder ? [NSString stringWithUTF8String:folder] : nil;
    if (path) [panel setDirectoryURL:[NSURL fileURLWithPath:path isDirectory:YES]];
}

// The path as a C string of the caller's, since the URL's own goes with the pool and a C++ string
// could throw where no exception may pass: out of a block on the main queue. Null for no choice.
char* runOpenPanel(const char* folder) {
    @autoreleasepool {
        NSOpenPanel* panel = [NSOpenPanel openPanel];
        describe(panel);
        openIn(panel, folder);
        if ([panel runModal] != NSModalResponseOK) return nullptr;
        const char* path = [[panel URL] fileSystemRepresentation];
        return path ? strdup(path) : nullptr;
    }
}

void runAlert(const char* message, bool warning) {
    @autoreleasepool {
        NSString* text = [NSString stringWithUTF8String:message];
        NSAlert* alert = [[NSAlert alloc] init];
        [alert setMessageText:@"Tintwell"];
        [alert setInformativeText:text ? text : @""];
        [alert setAlertStyle:warning ? NSAlertStyleWarning : NSAlertStyleInformational];
        [alert addButtonWithTitle:@"OK"];
        [alert runModal];
        [alert release];
    }
}

}  // namespace

std::string PickCube(const std::string& folder) {
    const char* start = folder.c_str();
    __block char* chosen = nullptr;
    onMainThread(^{
      chosen = runOpenPanel(start);
    });
    const std::unique_ptr<char, decltype(&std::free)> path(chosen, &std::free);
    return path ? std::string(path.get()) : std::string();
}

void Alert(const std::string& message, bool warning) {
    const char* text = message.c_str();
    onMainThread(^{
      runAlert(text, warning);
    });
}

}  // namespace tw_mac
