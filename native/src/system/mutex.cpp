// The threads' notes of what they hold, in builds that check the order of locks.
#include "native/src/mutex.h"

#include <cstdio>
#include <cstdlib>

namespace tw {
namespace {

// By the rule a thread holds one lock of each kind at most.
struct Held {
    const char* alone = nullptr;
    const char* innermost = nullptr;

    const char*& operator[](LockKind kind) {
        return kind == LockKind::kInnermost ? innermost : alone;
    }
};

// In the block of thread-local storage that each thread starts with. ThreadSanitizer (LLVM 16)
// guesses the size of blocks that threads get for a loaded module later, and sometimes ends the
// process when the guess is wrong.
[[gnu::tls_model("initial-exec")]] thread_local Held held;

}  // namespace

const char* heldLock() {
    return held.innermost ? held.innermost : held.alone;
}

void LockNote::enter() const {
    if (held.innermost || (held.alone && kind_ == LockKind::kAlone)) {
        std::fprintf(stderr, "Lock order: \"%s\" is taken inside \"%s\".\n", name_, heldLock());
        std::abort();
    }
    held[kind_] = name_;
}

void LockNote::leave() const {
    held[kind_] = nullptr;
}

}  // namespace tw
