// A queue's own thread, on which its command buffers run one after another.
#pragma once

#include <functional>
#include <memory>

namespace software_metal {

// Jobs run in the order in which they were pushed; the destructor waits for all of them. It may run
// on the worker's own thread, where the last reference to a queue can go away: then the rest of the
// jobs is done without anyone waiting.
//
// Threads: push from any thread.
class Worker {
public:
    Worker();
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void push(std::function<void()> job);

private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace software_metal
