// GNUstep's AppKit with the newer macOS names that dialogs.mm uses.
#pragma once

#include_next <AppKit/AppKit.h>

// GCC's runtime header spells them as casts, which literals such as @YES cannot take.
#undef YES
#undef NO
#define YES __objc_yes
#define NO __objc_no

static const NSAlertStyle NSAlertStyleWarning = NSWarningAlertStyle;
static const NSAlertStyle NSAlertStyleInformational = NSInformationalAlertStyle;

@interface NSURL (TintwellFilePath)
// Null when it is no file URL. Valid as long as the current autorelease pool.
- (const char*)fileSystemRepresentation;
@end

@interface NSSavePanel (TintwellContentTypes)
// UTType objects; the panel then offers files with their extensions, in lower or upper case.
- (void)setAllowedContentTypes:(NSArray*)types;
@end
