// Makes calls of the C and C++ library fail that a loaded module makes. The test program's own
// functions stand in for the library's; calls of the test, the simulated host and the device are
// let through. Sources: failing_calls.cpp, in a program that exports its symbols.
//
// Threads: any, but one failing call at a time.
#pragma once

#include <cstddef>
#include <functional>

namespace twtest {

enum class LibraryCall {
    kNew,          // every form of operator new: std::bad_alloc
    kThreadStart,  // std::thread: std::system_error
    kOpen,         // fopen: null
    kRead,         // fread: 0
    kWrite,        // fwrite and fprintf: nothing is written
    kClose,        // fclose: what was written is lost, the file is closed all the same
};

// The module is the one that this address lies in.
void watchCallsOf(const void* place);

// Calls count, and fail, while one of these lives.
class Watch {
public:
    Watch();
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
};

// The nth such call from now on, 1 being the next, fails, and no other of its kind.
void failCall(LibraryCall call, int nth);
// Every allocation of at least so many bytes fails, from now on.
void failBlocksFrom(std::size_t bytes);
// Calls *seen at every allocation of the module's on this thread, from now on; null: no more.
void tellOfBlocks(const std::function<void()>* seen);
// Whether the call that was asked for has not come yet.
bool isFailureDue(LibraryCall call);
// No call fails any more.
void letCallsPass();

// False for operator new under ThreadSanitizer, whose own operators cannot be replaced.
bool canFail(LibraryCall call);

// What the module has allocated with operator new and not given back, and opened and not closed.
long watchedBlocks();
long watchedFiles();

}  // namespace twtest
