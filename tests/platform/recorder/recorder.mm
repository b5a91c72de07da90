#include "tests/platform/recorder/recorder.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>
#include <dispatch/dispatch.h>

namespace twtest {

Recorder& recorder() {
    static Recorder only;
    return only;
}

}  // namespace twtest

namespace {

void record(const std::string& message) {
    twtest::recorder().messages.push_back(message);
}

std::string shown(NSString* text) {
    return text ? [text UTF8String] : "nil";
}

std::string shown(BOOL value) {
    return value ? "YES" : "NO";
}

}  // namespace

@implementation NSURL (TintwellFilePath)
- (const char*)fileSystemRepresentation {
    const std::optional<std::string>& path = twtest::recorder().path;
    return path ? path->c_str() : nullptr;
}
@end

@implementation UTType
+ (UTType*)typeWithFilenameExtension:(NSString*)extension {
    if (!twtest::recorder().knowsTypes) return nil;
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

@implementation NSOpenPanel
+ (NSOpenPanel*)openPanel {
    record("openPanel");
    return [[[self alloc] init] autorelease];
}
- (void)setTitle:(NSString*)title {
    record("setTitle: " + shown(title));
}
- (void)setMessage:(NSString*)message {
    record("setMessage: " + shown(message));
}
- (void)setCanChooseFiles:(BOOL)can {
    record("setCanChooseFiles: " + shown(can));
}
- (void)setCanChooseDirectories:(BOOL)can {
    record("setCanChooseDirectories: " + shown(can));
}
- (void)setAllowsMultipleSelection:(BOOL)allows {
    record("setAllowsMultipleSelection: " + shown(allows));
}
- (void)setAllowedContentTypes:(NSArray*)types {
    std::string names;
    for (UTType* type in types)
        names += ' ' + shown([type preferredFilenameExtension]);
    record("setAllowedContentTypes:" + names);
}
- (void)setDirectoryURL:(NSURL*)url {
    record("setDirectoryURL: " + shown([url path]));
}
- (NSInteger)runModal {
    record("runModal");
    return twtest::recorder().choosesOk ? NSModalResponseOK : 0;
}
- (NSURL*)URL {
    return [NSURL fileURLWithPath:@"/cube"];
}
@end

@implementation NSAlert
- (id)init {
    record("alloc");
    return [super init];
}
- (void)dealloc {
    record("dealloc");
    [super dealloc];
}
- (void)setMessageText:(NSString*)text {
    record("setMessageText: " + shown(text));
}
- (void)setInformativeText:(NSString*)text {
    record("setInformativeText: " + shown(text));
}
- (void)setAlertStyle:(NSAlertStyle)style {
    record(std::string("setAlertStyle: ") +
           (style == NSAlertStyleWarning ? "warning" : "informational"));
}
- (void)addButtonWithTitle:(NSString*)title {
    record("addButtonWithTitle: " + shown(title));
}
- (NSInteger)runModal {
    record("runModal");
    return 1000;
}
@end

struct tw_main_queue {
    char unused;
};

dispatch_queue_t dispatch_get_main_queue(void) {
    static tw_main_queue queue;
    return &queue;
}

void dispatch_sync(dispatch_queue_t, dispatch_block_t block) {
    record("dispatch_sync");
    block();
}
