// The plug-in's locks, and the one rule of their order: none is taken while another one is held,
// but the log's, which is the innermost. Builds with tests (TINTWELL_CHECK_LOCKS) hold every thread
// to it; shipped ones have nothing but the std::mutex.
#pragma once

#include <mutex>

namespace tw {

enum class LockKind {
    kAlone,      // only while no other lock is held
    kInnermost,  // under a lock of the other kind as well; nothing is taken under it
};

#ifdef TINTWELL_CHECK_LOCKS
// One lock in the record that a thread keeps of its locks. Names are constant texts.
class LockNote {
public:
    constexpr LockNote(const char* name, LockKind kind) : name_(name), kind_(kind) {}

    // Before the lock is taken. A breach of the order ends the process, with both locks' names on
    // the standard error.
    void enter() const;
    // After it was given back.
    void leave() const;

private:
    const char* name_;
    LockKind kind_;
};

// Name of a lock that the calling thread holds, the innermost one; null: none.
const char* heldLock();
#else
class LockNote {
public:
    constexpr LockNote(const char*, LockKind) {}
    void enter() const {}
    void leave() const {}
};
#endif

// For std::lock_guard. Threads: any.
class Mutex {
public:
    constexpr explicit Mutex(const char* name, LockKind kind = LockKind::kAlone)
        : note_(name, kind) {}
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    void lock() {
        note_.enter();
        mutex_.lock();
    }
    void unlock() {
        mutex_.unlock();
        note_.leave();
    }

private:
    [[no_unique_address]] LockNote note_;
    std::mutex mutex_;
};

#ifndef TINTWELL_CHECK_LOCKS
static_assert(sizeof(Mutex) == sizeof(std::mutex));
#endif

// A scope in which the thread takes no lock at all.
class LockFreeScope {
public:
    explicit LockFreeScope(const char* name) : note_(name, LockKind::kInnermost) { note_.enter(); }
    ~LockFreeScope() { note_.leave(); }
    LockFreeScope(const LockFreeScope&) = delete;
    LockFreeScope& operator=(const LockFreeScope&) = delete;

private:
    LockNote note_;
};

}  // namespace tw
