#include "tintwell_host/jobs/frame_pipeline.h"

#include <OpenImageIO/imageio.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/parallel_pipeline.h>

#include <mutex>

namespace program {
namespace {

// The picture libraries' own threads serve a picture that is alone; several frames at once keep the
// processors busy without them.
void shareThreads(int inFlight) {
    OIIO::attribute("threads", inFlight > 1 ? 1 : 0);
    OIIO::attribute("exr_threads", inFlight > 1 ? -1 : 0);
}

}  // namespace

int frameThreads(int asked) {
    return asked > 0 ? asked : tbb::info::default_concurrency();
}

void runFrames(const std::vector<FrameTask>& tasks, int threads,
               const std::function<bool()>& mayBegin,
               const std::function<FrameResult(const FrameTask&)>& render,
               const std::function<bool(const FrameResult&)>& take) {
    const auto inFlight = std::min(static_cast<std::size_t>(threads), tasks.size());
    shareThreads(static_cast<int>(inFlight));
    const tbb::global_control limit(tbb::global_control::max_allowed_parallelism, inFlight);
    // The lock orders all that threads share here, as checkers of threads do not see how the
    // library's own ones wait for each other.
    std::mutex mutex;
    bool goesOn = true;
    std::size_t next = 0;
    const auto begin = [&](tbb::flow_control& control) {
        const std::lock_guard lock(mutex);
        if (next < tasks.size() && goesOn && mayBegin()) return next++;
        control.stop();
        return next;
    };
    const auto work = [&](std::size_t task) {
        const FrameResult result = render(tasks[task]);
        const std::lock_guard lock(mutex);
        if (!take(result)) goesOn = false;
    };
    using tbb::filter_mode;
    tbb::parallel_pipeline(
        inFlight, tbb::make_filter<void, std::size_t>(filter_mode::serial_in_order, begin) &
                      tbb::make_filter<std::size_t, void>(filter_mode::parallel, work));
    // All that they did is seen from here on.
    const std::lock_guard lock(mutex);
}

}  // namespace program
