#include "software_metal/worker.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "software_metal/ledger.h"

namespace software_metal {

// Shared by the Worker and its thread, either of which may be the last to go.
struct Worker::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> jobs;
    bool ending = false;
    std::thread thread;

    std::function<void()> next() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return ending || !jobs.empty(); });
        if (jobs.empty()) return nullptr;
        std::function<void()> job = std::move(jobs.front());
        jobs.pop_front();
        return job;
    }
};

Worker::Worker() : state_(std::make_shared<State>()) {
    state_->thread = std::thread([state = state_] {
        while (std::function<void()> job = state->next()) {
            job();
            job = nullptr;  // what it holds is not to outlive its end
            jobEnds();
        }
    });
}

Worker::~Worker() {
    {
        const std::lock_guard lock(state_->mutex);
        state_->ending = true;
    }
    state_->changed.notify_one();
    if (state_->thread.get_id() == std::this_thread::get_id()) {
        state_->thread.detach();
    } else {
        state_->thread.join();
    }
}

void Worker::push(std::function<void()> job) {
    {
        const std::lock_guard lock(state_->mutex);
        state_->jobs.push_back(std::move(job));
        jobBegins();
    }
    state_->changed.notify_one();
}

}  // namespace software_metal
