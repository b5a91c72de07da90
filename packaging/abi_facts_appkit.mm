// The same for the frameworks: see abi_facts.cpp.
#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>
#include <dispatch/dispatch.h>

#include <type_traits>

static_assert(sizeof(BOOL) == 1 && sizeof(NSUInteger) == 8 && sizeof(NSInteger) == 8);
static_assert(std::is_same_v<NSUInteger, unsigned long> && std::is_same_v<NSInteger, long>);
static_assert(NSModalResponseOK == 1);
static_assert(NSAlertStyleWarning == 0 && NSAlertStyleInformational == 1);
static_assert(std::is_same_v<dispatch_block_t, void (^)(void)>);
