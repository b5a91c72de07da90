// Log lines of things that repeat: written when they change, not each time.
#pragma once

#include <string>
#include <string_view>

#include "native/src/log.h"
#include "native/src/mutex.h"

namespace tw {

// One kind of line, for the whole process (NeverDestroyed). Threads: any; lock order: the log's
// lock is taken under this one.
class LogOnChange {
public:
    // `name` is the lock's.
    explicit LogOnChange(const char* name) : mu_(name) {}

    // Logs `line` unless `key` is the very key of the last call. Throws what strings throw; the
    // line is then logged by the next such call.
    void log(std::string_view key, const char* line) {
        const std::lock_guard lock(mu_);
        if (key == last_) return;
        std::string kept(key);
        logLine("%s", line);
        last_.swap(kept);
    }
    // The line is its own key.
    void log(const char* line) { log(line, line); }

private:
    Mutex mu_;
    std::string last_;
};

}  // namespace tw
