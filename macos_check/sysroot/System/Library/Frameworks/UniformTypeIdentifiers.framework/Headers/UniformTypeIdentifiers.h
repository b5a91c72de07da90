#pragma once

#include <Foundation/Foundation.h>

__attribute__((availability(macos, introduced = 11.0)))
@interface UTType : NSObject
+ (instancetype)typeWithFilenameExtension:(NSString*)extension;
@end
