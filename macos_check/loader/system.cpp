#include "macos_check/loader/system.h"

#include <dlfcn.h>
#include <locale.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>
#include <stdexcept>
#include <string>

#include "macos_check/loader/appkit.h"

namespace macho {
namespace {

struct DarwinStat {
    std::int32_t device;
    std::uint16_t mode;
    std::uint16_t links;
    std::uint64_t inode;
    std::uint32_t owner[2];
    std::int32_t specialDevice;
    timespec times[4];  // access, modification, change, birth
    std::int64_t size;
    std::int64_t blocks;
    std::int32_t rest[8];
};
static_assert(sizeof(DarwinStat) == 144);

int statFile(const char* path, DarwinStat* out) {
    struct stat status;
    const int result = stat(path, &status);
    if (result != 0) return result;
    *out = {};
    out->mode = static_cast<std::uint16_t>(status.st_mode);
    out->times[1] = status.st_mtim;
    out->size = status.st_size;
    return 0;
}

void zero(void* at, std::size_t size) {
    std::memset(at, 0, size);
}

locale_t makeLocale(int categories, const char* name, locale_t base) {
    constexpr int darwinAll = 0x3F;
    if (categories != darwinAll) std::abort();  // single categories have other numbers here
    return newlocale(LC_ALL_MASK, name, base);
}

// A mutex that macOS would see as unlocked starts with a signature, which Linux would take for a
// lock. The word behind it is zero and serves as the lock.
std::atomic_ref<Word> mutexWord(void* mutex) {
    return std::atomic_ref(*reinterpret_cast<Word*>(static_cast<Byte*>(mutex) + 8));
}

constexpr Word kFree = 0;
constexpr Word kTaken = 1;
constexpr Word kDestroyed = 2;

// What macOS answers with an error, upon which the lock throws std::system_error, ends this
// process.
[[noreturn]] void tellDestroyed() {
    std::fputs("The bundle locked a mutex that it has destroyed.\n", stderr);
    std::abort();
}

void lockMutex(void* mutex) {
    for (Word before = kFree; !mutexWord(mutex).compare_exchange_weak(before, kTaken);) {
        if (before == kDestroyed) tellDestroyed();
        if (before == kTaken) mutexWord(mutex).wait(kTaken);
        before = kFree;
    }
}

void unlockMutex(void* mutex) {
    mutexWord(mutex).store(kFree);
    mutexWord(mutex).notify_one();
}

void endMutex(void* mutex) {
    mutexWord(mutex).store(kDestroyed);
    mutexWord(mutex).notify_all();
}

Address stackGuard = 0x00F1E2D3C4B5A697;

[[noreturn]] void missing() {
    std::fputs("The bundle called an import that this loader does not know.\n", stderr);
    std::abort();
}

// The bundle's memory comes from this process's own operator new, which a test may have replaced.
// Not inlined, nor is the next: the exception leaves through allocate(), which therefore may have
// nothing in it that this process's own C++ library would have to clean up.
[[gnu::noinline]] void* tryAllocate(std::size_t size) noexcept {
    try {
        return ::operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

template <class Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}

// Deep binding keeps this library and all it needs to themselves.
void* library() {
    static void* const handle = dlopen("libc++.so.1", RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    if (handle == nullptr) throw std::runtime_error("needs libc++ on this machine");
    return handle;
}

[[gnu::noinline]] void (*findThrowBadAlloc() noexcept)() {
    // std::__throw_bad_alloc()
    return reinterpret_cast<void (*)()>(dlsym(library(), "_ZSt17__throw_bad_allocv"));
}

void* allocate(std::size_t size) {
    if (void* memory = tryAllocate(size)) return memory;
    findThrowBadAlloc()();
    return nullptr;  // never
}

void deallocate(void* memory) {
    ::operator delete(memory);
}

// For tests that make the module's reads fail, which know them by where they return to: here, so
// the result is volatile and the call no jump.
std::size_t readFile(void* buffer, std::size_t size, std::size_t count, std::FILE* file) {
    const volatile std::size_t read = std::fread(buffer, size, count, file);
    return read;
}

void* standIn(std::string_view name) {
    static const std::map<std::string_view, void*> known = {
        {"___bzero", address(zero)},
        {"___error", address(__errno_location)},
        {"___stack_chk_guard", &stackGuard},
        {"__ZNSt3__15mutex4lockEv", address(lockMutex)},
        {"__ZNSt3__15mutex6unlockEv", address(unlockMutex)},
        {"__ZNSt3__15mutexD1Ev", address(endMutex)},
        {"__ZdlPv", address(deallocate)},
        {"__Znwm", address(allocate)},
        {"_fread", address(readFile)},
        {"_newlocale", address(makeLocale)},
        {"_stat$INODE64", address(statFile)},
        {"dyld_stub_binder", address(missing)},  // for pointers not bound yet: there are none
    };
    const auto found = known.find(name);
    return found == known.end() ? nullptr : found->second;
}

}  // namespace

void* resolveImport(std::string_view name) {
    if (void* found = standIn(name)) return found;
    if (void* found = resolveAppKit(name)) return found;
    // macOS puts an underscore before every name. C functions may be replaced by the program, for
    // tests of faults; what is C++ must come from the bundle's own library.
    const std::string own(name.substr(1));
    const bool isCxx = own.starts_with("_");
    if (void* found = isCxx ? nullptr : dlsym(RTLD_DEFAULT, own.c_str())) return found;
    if (void* found = dlsym(library(), own.c_str())) return found;
    return address(missing);
}

void registerFrame(const Byte* record) {
    using Register = void (*)(const void*);
    static const auto call = reinterpret_cast<Register>(dlsym(library(), "__register_frame"));
    call(record);
}

}  // namespace macho
