#include "tintwell_host/jobs/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace program {

Progress::Progress(std::size_t total) : total_(total), visible_(total > 1 && ::isatty(2) == 1) {}

Progress::~Progress() {
    if (visible_) std::fputc('\n', stderr);
}

void Progress::show(std::size_t done) {
    if (!visible_ || done == 0) return;
    total_ = std::max(total_, done);
    constexpr std::size_t kWidth = 40;
    const std::size_t filled = done * kWidth / total_;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
    const double rate = static_cast<double>(done) / std::max(seconds, 1e-3);
    const auto left = static_cast<long>(static_cast<double>(total_ - done) / rate + 0.5);
    std::fprintf(stderr, "\r[%s] %zu of %zu, %.1f a second, %ld:%02ld left ", bar.c_str(), done,
                 total_, rate, left / 60, left % 60);
}

void Progress::clear() const {
    if (visible_) std::fputs("\r\033[K", stderr);
}

}  // namespace program
