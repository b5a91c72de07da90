#include "tests/platform/spies.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>
#include <objc/runtime.h>

namespace {

twtest::AlertSeen alert;
twtest::PanelSeen panel;

void exchange(Class kind, SEL watched, SEL spy) {
    method_exchangeImplementations(class_getInstanceMethod(kind, watched),
                                   class_getInstanceMethod(kind, spy));
}

}  // namespace

// A spy that calls its own name calls the watched method: the two are exchanged.
@implementation NSAlert (TintwellSpy)
- (NSInteger)tintwellSpyRunModal {
    ++alert.runs;
    alert.style = static_cast<long>([self alertStyle]);
    alert.headline = [[self messageText] UTF8String];
    alert.text = [[self informativeText] UTF8String];
    alert.buttons = [[self buttons] count];
    return [self tintwellSpyRunModal];
}
- (void)tintwellSpyDealloc {
    ++alert.released;
    [self tintwellSpyDealloc];
}
@end

@implementation NSSavePanel (TintwellSpy)
- (void)tintwellSpySetMessage:(NSString*)message {
    panel.message = [message UTF8String];
    [self tintwellSpySetMessage:message];
}
- (void)tintwellSpySetAllowedContentTypes:(NSArray*)types {
    panel.restricted = true;
    [self tintwellSpySetAllowedContentTypes:types];
}
@end

@implementation UTType (TintwellSpy)
+ (UTType*)tintwellSpyNoType:(NSString*)extension {
    (void)extension;
    return nil;
}
@end

namespace twtest {

void watchDialogs() {
    exchange([NSAlert class], @selector(runModal), @selector(tintwellSpyRunModal));
    exchange([NSAlert class], @selector(dealloc), @selector(tintwellSpyDealloc));
    exchange([NSSavePanel class], @selector(setMessage:), @selector(tintwellSpySetMessage:));
    exchange([NSSavePanel class], @selector(setAllowedContentTypes:),
             @selector(tintwellSpySetAllowedContentTypes:));
}

const AlertSeen& alertSeen() {
    return alert;
}

const PanelSeen& panelSeen() {
    return panel;
}

void forgetFileTypes() {
    method_exchangeImplementations(
        class_getClassMethod([UTType class], @selector(typeWithFilenameExtension:)),
        class_getClassMethod([UTType class], @selector(tintwellSpyNoType:)));
}

}  // namespace twtest
