#include "tintwell_host/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace program {

Progress::Progress(std::size_t total) : total_(total), visible_(total > 1 && ::isatty(2) == 1) {}

Progress::~Progress() {
    if (visible_) std::fputc('\n', stderr);
}

void Progress::show(std::size_t done) const {
    if (!visible_) return;
    constexpr std::size_t kWidth = 40;
    const std::size_t filled = done * kWidth / total_;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    std::fprintf(stderr, "\r[%s] %zu of %zu", bar.c_str(), done, total_);
}

}  // namespace program
