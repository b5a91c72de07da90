#include "tintwell_host/jobs/frame_pipeline.h"

#include <OpenImageIO/imageio.h>
#include <tbb/global_control.h>
#include <tbb/info.h>
#include <tbb/parallel_pipeline.h>

#include <atomic>
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
    std::atomic<bool> goesOn{true};
    std::atomic<std::size_t> next{0};
    std::mutex taking;
    const auto begin = [&](tbb::flow_control& control) {
        const std::size_t task = next;
        if (task < tasks.size() && goesOn && mayBegin()) return next++;
        control.stop();
        return task;
    };
    const auto work = [&](std::size_t task) {
        const FrameResult result = render(tasks[task]);
        const std::lock_guard lock(taking);
        if (!take(result)) goesOn = false;
    };
    using tbb::filter_mode;
    tbb::parallel_pipeline(
        inFlight, tbb::make_filter<void, std::size_t>(filter_mode::serial_in_order, begin) &
                      tbb::make_filter<std::size_t, void>(filter_mode::parallel, work));
    // The caller sees all that take() did, whatever the library's own threads order.
    const std::lock_guard lock(taking);
}

}  // namespace program
