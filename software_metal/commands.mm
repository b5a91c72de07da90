// Command buffers and their encoders: what is encoded is checked and recorded, and runs on the
// queue's thread after the commit.
#include <Block.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "software_metal/dispatch.h"
#include "software_metal/ledger.h"
#include "software_metal/objects.h"

using namespace software_metal;

namespace {

double seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

Extent extent(MTLSize size) {
    return {static_cast<unsigned>(size.width), static_cast<unsigned>(size.height),
            static_cast<unsigned>(size.depth)};
}

Encoded described(const Dispatch& dispatch) {
    Encoded encoded;
    const Extent* const extents[] = {&dispatch.groups, &dispatch.threads};
    unsigned* const to[] = {encoded.groups, encoded.threads};
    for (int i = 0; i < 2; ++i) {
        to[i][0] = extents[i]->width;
        to[i][1] = extents[i]->height;
        to[i][2] = extents[i]->depth;
    }
    if (!dispatch.inlined.empty())
        encoded.inlined.assign(dispatch.inlined.back().begin(), dispatch.inlined.back().end());
    return encoded;
}

// References to the objects that recorded work needs.
class Held {
public:
    Held() = default;
    ~Held() {
        for (id object : objects_)
            [object release];
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    void hold(id object) { objects_.push_back([object retain]); }

private:
    std::vector<id> objects_;
};

}  // namespace

struct SoftwareMetalCommands {
    // Recorded by the one thread that encodes.
    std::vector<Dispatch> dispatches;
    std::vector<MTLCommandBufferHandler> handlers;
    bool encoding = false;
    Held held;

    std::mutex mutex;
    std::condition_variable ended;
    MTLCommandBufferStatus status = MTLCommandBufferStatusNotEnqueued;
    bool handlersCalled = false;
    NSError* error = nil;
    double start = 0.0, end = 0.0;

    ~SoftwareMetalCommands() {
        for (MTLCommandBufferHandler handler : handlers)
            Block_release(handler);
        [error release];
    }

    // False when it has been committed before.
    bool setCommitted() {
        const std::lock_guard lock(mutex);
        if (status != MTLCommandBufferStatusNotEnqueued) return false;
        status = MTLCommandBufferStatusCommitted;
        return true;
    }

    void execute(const Faults& faults) {
        std::this_thread::sleep_for(std::chrono::milliseconds(faults.delayMs));
        if (faults.atExecution) faults.atExecution();
        const double began = seconds();
        if (!faults.failExecution) {
            for (const Dispatch& dispatch : dispatches) {
                run(dispatch);
                count([](Counts& counts) { ++counts.dispatches; });
            }
        }
        const std::lock_guard lock(mutex);
        start = began;
        end = faults.seconds ? began + *faults.seconds : seconds();
        if (faults.failExecution && faults.error) {
            error = [softwareMetalError(*faults.error) retain];
        }
        status =
            faults.failExecution ? MTLCommandBufferStatusError : MTLCommandBufferStatusCompleted;
    }

    void callHandlers(id<MTLCommandBuffer> buffer) {
        for (MTLCommandBufferHandler handler : handlers)
            handler(buffer);
        const std::lock_guard lock(mutex);
        handlersCalled = true;
        ended.notify_all();
    }
};

@interface SoftwareMetalEncoder : SoftwareMetalObject <MTLComputeCommandEncoder> {
    SoftwareMetalCommandBuffer* _owner;
    SoftwareMetalCommands* _commands;
    Dispatch* _next;  // what is set so far
    BOOL _ended;
}
- (id)initWithOwner:(SoftwareMetalCommandBuffer*)owner commands:(SoftwareMetalCommands*)commands;
@end

@implementation SoftwareMetalEncoder
- (id)initWithOwner:(SoftwareMetalCommandBuffer*)owner commands:(SoftwareMetalCommands*)commands {
    self = [super init];
    if (self) {
        _owner = [owner retain];
        _commands = commands;
        _next = new Dispatch;
        commands->encoding = true;
    }
    return self;
}
- (void)dealloc {
    if (!_ended) misuse("an encoder released without endEncoding");
    delete _next;
    [_owner release];
    [super dealloc];
}
- (BOOL)isOpen {
    if (_ended) misuse("an encoder used after endEncoding");
    return !_ended;
}
- (void)setComputePipelineState:(id<MTLComputePipelineState>)state {
    if (![self isOpen]) return;
    if (!state) {
        misuse("no pipeline");
        return;
    }
    _commands->held.hold(state);
    SoftwareMetalFunction* function = [static_cast<SoftwareMetalPipeline*>(state) function];
    _next->module = [function module];
    _next->kernel = [function kernel];
}
- (void)setBuffer:(id<MTLBuffer>)buffer offset:(NSUInteger)offset atIndex:(NSUInteger)index {
    if (![self isOpen]) return;
    if (index >= kBindings || (buffer && offset >= buffer.length)) {
        misuse("a buffer bound out of range");
        return;
    }
    if (buffer) _commands->held.hold(buffer);
    _next->slots[index] = buffer ? static_cast<char*>([buffer contents]) + offset : nullptr;
}
- (void)setBytes:(const void*)bytes length:(NSUInteger)length atIndex:(NSUInteger)index {
    if (![self isOpen]) return;
    if (index >= kBindings || length == 0 || length > 4096) {
        misuse("inline bytes of a bad index or length");
        return;
    }
    const auto* from = static_cast<const unsigned char*>(bytes);
    _next->inlined.emplace_back(from, from + length);
    _next->slots[index] = _next->inlined.back().data();
}
- (BOOL)canDispatch:(MTLSize)groups threads:(MTLSize)threads {
    if (!_next->kernel) {
        misuse("a dispatch without a pipeline");
        return NO;
    }
    const NSUInteger groupSize = threads.width * threads.height * threads.depth;
    if (extent(groups).total() == 0 || groupSize == 0 || groupSize > 1024 || threads.depth != 1) {
        misuse("a dispatch of a bad size");
        return NO;
    }
    for (const int binding : _next->kernel->buffers) {
        if (_next->slots[static_cast<std::size_t>(binding)]) continue;
        misuse("nothing bound at index " + std::to_string(binding));
        return NO;
    }
    return YES;
}
- (void)dispatchThreadgroups:(MTLSize)groups threadsPerThreadgroup:(MTLSize)threads {
    if (![self isOpen] || ![self canDispatch:groups threads:threads]) return;
    _next->groups = extent(groups);
    _next->threads = extent(threads);
    if (const auto tell = faults().atDispatch) tell(described(*_next));
    _commands->dispatches.push_back(std::move(*_next));
    *_next = Dispatch();
}
- (void)endEncoding {
    if (![self isOpen]) return;
    _ended = YES;
    _commands->encoding = false;
}
@end

@implementation SoftwareMetalCommandBuffer
- (id)initWithWorker:(const std::shared_ptr<Worker>&)worker {
    self = [super init];
    if (self) {
        _commands = new SoftwareMetalCommands;
        _worker = new std::shared_ptr<Worker>(worker);
    }
    return self;
}
- (void)dealloc {
    delete _commands;
    delete _worker;
    [super dealloc];
}
- (id<MTLComputeCommandEncoder>)computeCommandEncoder {
    if (takesFault(&Faults::noEncoder)) return nil;
    if (_commands->encoding) misuse("a second encoder while one is open");
    return [[[SoftwareMetalEncoder alloc] initWithOwner:self commands:_commands] autorelease];
}
- (void)addCompletedHandler:(MTLCommandBufferHandler)block {
    if (self.status != MTLCommandBufferStatusNotEnqueued) misuse("a handler after the commit");
    _commands->handlers.push_back(Block_copy(block));
}
- (void)commit {
    if (_commands->encoding) misuse("a commit with an open encoder");
    if (!_commands->setCommitted()) {
        misuse("a second commit");
        return;
    }
    Faults now = faults();
    now.failExecution = takesFault(&Faults::failExecution);
    if (now.atCommit) now.atCommit();
    [self retain];  // until the work is done
    (*_worker)->push([self, now] {
        @autoreleasepool {
            _commands->execute(now);
            _commands->callHandlers(self);
            [self release];
        }
    });
}
- (void)waitUntilCompleted {
    if (self.status == MTLCommandBufferStatusNotEnqueued) {
        misuse("a wait before the commit");
        return;
    }
    std::unique_lock lock(_commands->mutex);
    _commands->ended.wait(lock, [self] { return _commands->handlersCalled; });
}
- (MTLCommandBufferStatus)status {
    const std::lock_guard lock(_commands->mutex);
    return _commands->status;
}
- (NSError*)error {
    const std::lock_guard lock(_commands->mutex);
    return _commands->error;
}
- (CFTimeInterval)GPUStartTime {
    const std::lock_guard lock(_commands->mutex);
    return _commands->start;
}
- (CFTimeInterval)GPUEndTime {
    const std::lock_guard lock(_commands->mutex);
    return _commands->end;
}
@end
