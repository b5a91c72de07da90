#include "tintwell_host/jobs/stop_request.h"

#include <signal.h>

#include <atomic>

namespace program {
namespace {

std::atomic<int> came{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may set it");

void note(int signal) {
    came = signal;
}

void handle(int signal, void (*handler)(int), int flags) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART | flags;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

StopRequest::StopRequest() {
    came = 0;
    handle(SIGTERM, note, 0);
    handle(SIGINT, note, static_cast<int>(SA_RESETHAND));
}

StopRequest::~StopRequest() {
    handle(SIGTERM, SIG_IGN, 0);
    handle(SIGINT, SIG_IGN, 0);
}

int StopRequest::signal() {
    return came;
}

}  // namespace program
