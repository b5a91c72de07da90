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

void handle(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGTERM, &action, nullptr);
    action.sa_flags |= static_cast<int>(SA_RESETHAND);
    ::sigaction(SIGINT, &action, nullptr);
}

}  // namespace

StopRequest::StopRequest() {
    came = 0;
    handle(note);
}

StopRequest::~StopRequest() {
    handle(SIG_DFL);
}

int StopRequest::signal() {
    return came;
}

}  // namespace program
