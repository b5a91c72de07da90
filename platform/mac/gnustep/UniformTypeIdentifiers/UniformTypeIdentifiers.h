// A type is its file-name extension here: GNUstep has no type database.
#pragma once

#import <Foundation/Foundation.h>

@interface UTType : NSObject {
    NSString* _extension;
}
// Nil for an empty extension.
+ (UTType*)typeWithFilenameExtension:(NSString*)extension;
- (NSString*)preferredFilenameExtension;
@end
