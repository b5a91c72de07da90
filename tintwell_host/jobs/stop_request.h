// A polite request to stop: SIGINT or SIGTERM.
#pragma once

namespace program {

// While one lives the two signals do not end the process at once. A second SIGINT does: somebody
// has no patience. A second SIGTERM does not, as programs that stop others may send it twice.
// After it, when the process only has to end, both are ignored: its exit code says what was done.
class StopRequest {
public:
    StopRequest();
    ~StopRequest();
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    // The signal that came, 0 for none. Threads: any.
    static int signal();
};

}  // namespace program
