// What a test may ask of the software Metal device: to fail, and what it has seen. Plain C++; the
// device itself is reached through Metal/Metal.h only.
//
// Threads: every function from any thread.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace software_metal {

// A dispatch as it was encoded.
struct Encoded {
    unsigned groups[3] = {};   // columns, rows, layers of thread groups
    unsigned threads[3] = {};  // the same of the threads in a group
    std::string inlined;       // the bytes set in the place of a buffer, the last ones
};

// What the devices of this process do wrong from now on. A command buffer fails or waits as the
// faults stand when it is committed.
struct Faults {
    // Not 0: of the calls that the switches below would have fail, from now on, only the nth does.
    int nth = 0;
    bool noLibrary = false;
    bool noFunction = false;
    bool noPipeline = false;
    bool noBuffer = false;
    bool noCommandBuffer = false;
    bool noEncoder = false;
    bool failExecution = false;  // nothing runs; the command buffer ends with the error status
    // Description of the error object that comes with noLibrary, noPipeline and failExecution;
    // nothing: they come without one.
    std::optional<std::string> error = "injected";
    // Compiled in the place of the program's text unless empty.
    std::string source;
    // What a command buffer waits before it runs.
    int delayMs = 0;
    // What the device says that a command buffer ran; nothing: the truth.
    std::optional<double> seconds;
    // Called, unless empty, by the thread that commits a command buffer, ...
    std::function<void()> atCommit;
    // ... that encodes a dispatch, ...
    std::function<void(const Encoded&)> atDispatch;
    // ... and that has a buffer made, with the bytes that it is to hold.
    std::function<void(const void* bytes, std::size_t length)> atBuffer;
    // Called by the queue's thread before a command buffer runs, unless empty.
    std::function<void()> atExecution;
};

struct Counts {
    long liveObjects = 0;  // devices, queues, buffers, options, libraries, functions, pipelines,
                           // commands
    // Since the process began, as all that follow.
    long compilations = 0;  // also of a text that was compiled before
    long buffers = 0;
    long commandBuffers = 0;
    long dispatches = 0;         // that ran
    double lastCompileMs = 0.0;  // of the last text that was new
    bool lastFastMaths = false;  // as the last compilation asked for
};

void setFaults(const Faults& faults);
Faults faults();
// Whether the nth failing call that was asked for has not come yet.
bool isFaultDue();
Counts counts();
// Returns once every command buffer that was committed has run and its queue's thread has given it
// up, which is a little after the work is seen to be done. Not from a completed handler.
void waitUntilIdle();

// Misuse of the interface since the last call, a line each, which a validation layer would stop at:
// an encoder left open, a handler after the commit, a buffer that is not bound, ...
std::string takeMisuse();

// From the next command buffer on, single-precision subnormals, operands and results of arithmetic,
// count as zeros of their sign, as on Apple's GPUs. Plain loads and stores keep them.
void setFlushesSubnormals(bool flushes);

}  // namespace software_metal
