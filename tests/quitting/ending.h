// Processes that end while the host still calls the effect.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace quitting {

// Runs `body` in a process of its own, which then ends as one does whose main returns. Fails the
// test unless it ends well and in time. The calling process must have no other threads.
void expectGoodEnd(const std::function<void()>& body);

// For such a process, first of all: `work` is done at exit, after everything that was registered to
// be done there later on, destructors of statics included. What it throws ends the process badly.
void atTheVeryEnd(std::function<void()> work);

// A thread whose work ends the process badly when it throws.
std::thread startThread(std::function<void()> work);

// Throws with these words unless it holds: a failed EXPECT would not be seen in a process that
// ends.
void require(bool holds, const std::string& words);

// Where threads are kept inside their calls.
class Gate {
public:
    // Called by a thread at every step of its call; the first one keeps it until the gate opens, if
    // it has announced itself.
    void announce();
    void step();

    void waitFor(int threads);
    void open();

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int waiting_ = 0;
    bool isOpen_ = false;
};

}  // namespace quitting
