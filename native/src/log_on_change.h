// Log lines of things that repeat: written when they change, not each time.
#pragma once

#include <mutex>
#include <string>
#include <string_view>

#include "native/src/log.h"

namespace tw {

// One kind of line. Threads: any; lock order: the log's lock is taken under this one.
class LogOnChange {
public:
    // Logs `line` unless `key` is the very key of the last call. Throws what strings throw.
    void line(std::string_view key, const char* line) {
        const std::lock_guard lock(mu_);
        if (key == last_) return;
        last_ = key;
        logLine("%s", line);
    }
    void line(const char* line) { this->line(line, line); }

private:
    std::mutex mu_;
    std::string last_;
};

}  // namespace tw
