#pragma once

#include <Foundation/Foundation.h>

@class NSButton, UTType;

typedef NSInteger NSModalResponse;
enum : NSModalResponse { NSModalResponseOK = 1 };
enum NSAlertStyle : NSUInteger { NSAlertStyleWarning = 0, NSAlertStyleInformational = 1 };

@interface NSAlert : NSObject
- (void)setMessageText:(NSString*)text;
- (void)setInformativeText:(NSString*)text;
- (void)setAlertStyle:(NSAlertStyle)style;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
@end

@interface NSOpenPanel : NSObject
+ (NSOpenPanel*)openPanel;
- (void)setTitle:(NSString*)text;
- (void)setMessage:(NSString*)text;
- (void)setCanChooseFiles:(BOOL)on;
- (void)setCanChooseDirectories:(BOOL)on;
- (void)setAllowsMultipleSelection:(BOOL)on;
- (void)setAllowedContentTypes:(NSArray<UTType*>*)types
    __attribute__((availability(macos, introduced = 11.0)));
- (void)setDirectoryURL:(NSURL*)folder;
- (NSModalResponse)runModal;
- (NSURL*)URL;
@end
