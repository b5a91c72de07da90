// The part of AppKit that dialogs.mm uses, without windows: it records each message, and the
// test gives the user's answers. Declared in our own words; recorder.mm implements it.
#pragma once

#import <Foundation/Foundation.h>

// GCC's runtime header spells them as casts, which literals such as @YES cannot take.
#undef YES
#undef NO
#define YES __objc_yes
#define NO __objc_no

static const NSInteger NSModalResponseOK = 1;

typedef enum { NSAlertStyleWarning = 0, NSAlertStyleInformational = 1 } NSAlertStyle;

@interface NSURL (TintwellFilePath)
- (const char*)fileSystemRepresentation;
@end

@interface NSOpenPanel : NSObject
+ (NSOpenPanel*)openPanel;
- (void)setTitle:(NSString*)title;
- (void)setMessage:(NSString*)message;
- (void)setCanChooseFiles:(BOOL)can;
- (void)setCanChooseDirectories:(BOOL)can;
- (void)setAllowsMultipleSelection:(BOOL)allows;
- (void)setAllowedContentTypes:(NSArray*)types;
- (void)setDirectoryURL:(NSURL*)url;
- (NSInteger)runModal;
- (NSURL*)URL;
@end

@interface NSAlert : NSObject
- (void)setMessageText:(NSString*)text;
- (void)setInformativeText:(NSString*)text;
- (void)setAlertStyle:(NSAlertStyle)style;
- (void)addButtonWithTitle:(NSString*)title;
- (NSInteger)runModal;
@end
