#include "tests/support/failing_calls.h"

#include <dlfcn.h>
#include <link.h>
#include <stdio_ext.h>
#include <unwind.h>
#include <ext/malloc_allocator.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <new>
#include <set>
#include <system_error>
#include <thread>

// ThreadSanitizer's own operators cannot be replaced.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TINTWELL_FIXED_OPERATORS
#endif
#endif

#define STAND_IN __attribute__((visibility("default")))

namespace {

using twtest::LibraryCall;

// Where a loaded file lies in memory.
struct Range {
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;

    bool contains(const void* place) const {
        const auto address = reinterpret_cast<std::uintptr_t>(place);
        return address >= begin && address < end;
    }
};

struct Search {
    const void* place;
    Range found;
};

int visitFile(dl_phdr_info* file, std::size_t, void* data) {
    auto& search = *static_cast<Search*>(data);
    Range range{UINTPTR_MAX, 0};
    for (int i = 0; i < file->dlpi_phnum; ++i) {
        const ElfW(Phdr)& segment = file->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD) continue;
        const std::uintptr_t begin = file->dlpi_addr + segment.p_vaddr;
        range.begin = std::min(range.begin, begin);
        range.end = std::max(range.end, begin + segment.p_memsz);
    }
    if (!range.contains(search.place)) return 0;
    search.found = range;
    return 1;
}

Range fileWith(const void* place) {
    Search search{place, {}};
    dl_iterate_phdr(visitFile, &search);
    return search.found;
}

constexpr char kStartThread[] =
    "_ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE";

template <class Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Written before anything is watched and not again.
Range watched;
Range cxxLibrary;

std::atomic<bool> isWatching{false};
std::array<std::atomic<int>, 6> callsLeft = {};  // until the one that fails; 0: none
std::atomic<std::size_t> tooLarge{SIZE_MAX};     // for an allocation
thread_local const std::function<void()>* seenBlock = nullptr;
std::atomic<long> blocks{0};
std::atomic<long> files{0};

struct Walk {
    bool inLibrary = false;
    const void* caller = nullptr;
};

_Unwind_Reason_Code visitFrame(_Unwind_Context* frame, void* data) {
    auto& walk = *static_cast<Walk*>(data);
    const auto* place = reinterpret_cast<const void*>(_Unwind_GetIP(frame));
    const bool inLibrary = cxxLibrary.contains(place);
    if (walk.inLibrary && !inLibrary) {
        walk.caller = place;
        return _URC_NORMAL_STOP;
    }
    walk.inLibrary = inLibrary;
    return _URC_NO_REASON;
}

// The caller of the C++ library function that makes the present call.
const void* callerOfLibrary() {
    Walk walk;
    _Unwind_Backtrace(visitFrame, &walk);
    return walk.caller;
}

// Whether a call that returns to this place is one of the module's, be it by way of the C++
// library, whose strings and vectors allocate there.
bool isWatched(const void* caller) {
    if (!isWatching) return false;
    if (watched.contains(caller)) return true;
    return cxxLibrary.contains(caller) && watched.contains(callerOfLibrary());
}

std::atomic<int>& leftOf(LibraryCall call) {
    return callsLeft[static_cast<std::size_t>(call)];
}

// Counts a call of the module's; true for the one that is to fail.
bool fails(LibraryCall call) {
    std::atomic<int>& left = leftOf(call);
    return left != 0 && --left == 0;
}

}  // namespace

namespace twtest {

void watchCallsOf(const void* place) {
    cxxLibrary = fileWith(dlsym(RTLD_NEXT, kStartThread));
    watched = fileWith(place);
}

Watch::Watch() {
    isWatching = true;
}

Watch::~Watch() {
    isWatching = false;
}

void failCall(LibraryCall call, int nth) {
    leftOf(call) = nth;
}

void failBlocksFrom(std::size_t bytes) {
    tooLarge = bytes;
}

void tellOfBlocks(const std::function<void()>* seen) {
    seenBlock = seen;
}

bool isFailureDue(LibraryCall call) {
    return leftOf(call) > 0;
}

void letCallsPass() {
    for (std::atomic<int>& left : callsLeft)
        left = 0;
    tooLarge = SIZE_MAX;
}

bool canFail(LibraryCall call) {
#ifdef TINTWELL_FIXED_OPERATORS
    return call != LibraryCall::kNew;
#else
    static_cast<void>(call);
    return true;
#endif
}

long watchedBlocks() {
    return blocks;
}

long watchedFiles() {
    return files;
}

}  // namespace twtest

#ifndef TINTWELL_FIXED_OPERATORS

namespace {

// What was allocated for the module. Aside, not in the blocks: another C++ library in this process
// may free a block that these operators gave, and give them one to free.
class WatchedBlocks {
public:
    void add(const void* block) {
        const std::lock_guard lock(mutex_);
        places_.insert(block);
        blocks = static_cast<long>(places_.size());
    }

    void remove(const void* block) {
        const std::lock_guard lock(mutex_);
        places_.erase(block);
        blocks = static_cast<long>(places_.size());
    }

private:
    std::mutex mutex_;
    std::set<const void*, std::less<>, __gnu_cxx::malloc_allocator<const void*>> places_;
};

// Never destroyed: blocks are released to the end.
WatchedBlocks& watchedPlaces() {
    alignas(WatchedBlocks) static std::byte memory[sizeof(WatchedBlocks)];
    static auto* const places = new (memory) WatchedBlocks;
    return *places;
}

void* allocate(std::size_t size, std::size_t alignment, const void* caller) {
    const bool mine = isWatched(caller);
    if (mine && seenBlock) (*seenBlock)();
    if (mine && (size >= tooLarge || fails(LibraryCall::kNew))) throw std::bad_alloc();
    if (size > PTRDIFF_MAX - alignment) throw std::bad_alloc();
    const std::size_t whole = (size + alignment - 1) / alignment * alignment;
    void* memory = std::aligned_alloc(alignment, std::max(whole, alignment));
    if (memory == nullptr) throw std::bad_alloc();
    if (mine) watchedPlaces().add(memory);
    return memory;
}

void release(void* block) {
    if (blocks != 0) watchedPlaces().remove(block);
    std::free(block);
}

}  // namespace

// The library's other forms of new and delete end in these.
void* operator new(std::size_t size) {
    return allocate(size, alignof(std::max_align_t), __builtin_return_address(0));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate(size, static_cast<std::size_t>(alignment), __builtin_return_address(0));
}

void operator delete(void* block) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t) noexcept {
    release(block);
}

void operator delete(void* block, std::align_val_t) noexcept {
    release(block);
}

void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    release(block);
}

#endif

STAND_IN void std::thread::_M_start_thread(_State_ptr state, void (*depend)()) {
    if (isWatched(__builtin_return_address(0)) && fails(LibraryCall::kThreadStart)) {
        throw std::system_error(EAGAIN, std::generic_category(), "thread constructor failed");
    }
    static auto* const start = real<void(std::thread*, _State_ptr, void (*)())>(kStartThread);
    start(this, std::move(state), depend);
}

extern "C" {

STAND_IN std::FILE* fopen(const char* path, const char* mode) {
    static auto* const open = real<decltype(fopen)>("fopen");
    const bool mine = isWatched(__builtin_return_address(0));
    if (mine && fails(LibraryCall::kOpen)) {
        errno = EMFILE;
        return nullptr;
    }
    std::FILE* file = open(path, mode);
    if (mine && file != nullptr) ++files;
    return file;
}

STAND_IN std::size_t fread(void* buffer, std::size_t size, std::size_t count, std::FILE* file) {
    static auto* const read = real<decltype(fread)>("fread");
    if (isWatched(__builtin_return_address(0)) && fails(LibraryCall::kRead)) return 0;
    return read(buffer, size, count, file);
}

STAND_IN std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count,
                            std::FILE* file) {
    static auto* const write = real<decltype(fwrite)>("fwrite");
    if (isWatched(__builtin_return_address(0)) && fails(LibraryCall::kWrite)) return 0;
    return write(bytes, size, count, file);
}

STAND_IN int fprintf(std::FILE* file, const char* format, ...) {
    if (isWatched(__builtin_return_address(0)) && fails(LibraryCall::kWrite)) return -1;
    std::va_list arguments;
    va_start(arguments, format);
    const int written = std::vfprintf(file, format, arguments);
    va_end(arguments);
    return written;
}

STAND_IN int fclose(std::FILE* file) {
    static auto* const close = real<decltype(fclose)>("fclose");
    if (!isWatched(__builtin_return_address(0))) return close(file);
    --files;
    const bool isLost = fails(LibraryCall::kClose);
    if (isLost) __fpurge(file);
    const int result = close(file);
    return isLost ? EOF : result;
}

}  // extern "C"
