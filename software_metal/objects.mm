#include "software_metal/objects.h"

#include <cstdlib>
#include <cstring>

#include "software_metal/ledger.h"

using software_metal::count;
using software_metal::Counts;
using software_metal::Kernel;
using software_metal::KernelModule;

NSError* softwareMetalError(const std::string& description) {
    NSString* text = [NSString stringWithUTF8String:description.c_str()];
    return [NSError errorWithDomain:@"SoftwareMetal"
                               code:1
                           userInfo:@{NSLocalizedDescriptionKey : text}];
}

@implementation MTLCompileOptions
- (id)init {
    self = [super init];
    if (self) {
        _fastMathEnabled = YES;
        count([](Counts& counts) { ++counts.liveObjects; });
    }
    return self;
}
- (void)dealloc {
    count([](Counts& counts) { --counts.liveObjects; });
    [super dealloc];
}
@synthesize fastMathEnabled = _fastMathEnabled;
@end

@implementation SoftwareMetalObject
- (id)init {
    self = [super init];
    if (self) {
        _references = 1;
        count([](Counts& counts) { ++counts.liveObjects; });
    }
    return self;
}
- (id)retain {
    __atomic_fetch_add(&_references, 1, __ATOMIC_RELAXED);
    return self;
}
- (oneway void)release {
    if (__atomic_fetch_sub(&_references, 1, __ATOMIC_ACQ_REL) == 1) [self dealloc];
}
- (NSUInteger)retainCount {
    return static_cast<NSUInteger>(__atomic_load_n(&_references, __ATOMIC_RELAXED));
}
- (void)dealloc {
    count([](Counts& counts) { --counts.liveObjects; });
    [super dealloc];
}
@end

@implementation SoftwareMetalBuffer
- (id)initWithBytes:(const void*)bytes length:(NSUInteger)length {
    self = [super init];
    if (self) {
        _memory = std::malloc(length);
        _length = length;
        std::memcpy(_memory, bytes, length);
    }
    return self;
}
- (void)dealloc {
    std::free(_memory);
    [super dealloc];
}
- (NSUInteger)length {
    return _length;
}
- (void*)contents {
    return _memory;
}
@end

@implementation SoftwareMetalFunction
- (id)initWithModule:(const std::shared_ptr<const KernelModule>&)module
              kernel:(const Kernel*)kernel {
    self = [super init];
    if (self) {
        _module = new std::shared_ptr<const KernelModule>(module);
        _kernel = kernel;
    }
    return self;
}
- (void)dealloc {
    delete _module;
    [super dealloc];
}
- (const std::shared_ptr<const KernelModule>&)module {
    return *_module;
}
- (const Kernel*)kernel {
    return _kernel;
}
- (NSString*)name {
    return [NSString stringWithUTF8String:_kernel->name.c_str()];
}
@end

@implementation SoftwareMetalLibrary
- (id)initWithModule:(const std::shared_ptr<const KernelModule>&)module {
    self = [super init];
    if (self) _module = new std::shared_ptr<const KernelModule>(module);
    return self;
}
- (void)dealloc {
    delete _module;
    [super dealloc];
}
- (id<MTLFunction>)newFunctionWithName:(NSString*)name {
    if (software_metal::takesFault(&software_metal::Faults::noFunction)) return nil;
    for (const Kernel& kernel : (*_module)->kernels) {
        if (kernel.name == [name UTF8String])
            return [[SoftwareMetalFunction alloc] initWithModule:*_module kernel:&kernel];
    }
    return nil;
}
@end

@implementation SoftwareMetalPipeline
- (id)initWithFunction:(SoftwareMetalFunction*)function {
    self = [super init];
    if (self) _function = [function retain];
    return self;
}
- (void)dealloc {
    [_function release];
    [super dealloc];
}
- (SoftwareMetalFunction*)function {
    return _function;
}
- (NSUInteger)maxTotalThreadsPerThreadgroup {
    return 1024;
}
@end
