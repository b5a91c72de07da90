#include "tintwell_host/session/gpu_session.h"

#include <cstdio>
#include <mutex>

#include "host_sim/gpu_instance.h"
#include "host_sim/gpu_side.h"

namespace program {

struct GpuSession::State {
    explicit State(host_sim::Host& host) : side(host) { side.enter(); }

    host_sim::GpuSide side;
    std::mutex mutex;
    bool toldAboutCpu = false;
};

GpuSession::GpuSession(host_sim::Host& host) : state_(std::make_unique<State>(host)) {}

GpuSession::~GpuSession() = default;

PF_Err GpuSession::render(host_sim::Instance& effect, const host_sim::Frame& input,
                          host_sim::Frame& output) {
    const std::lock_guard lock(state_->mutex);
    const host_sim::GpuRender how = host_sim::renderOnGpu(state_->side, effect, input, output);
    if (!how.onGpu && !state_->toldAboutCpu) {
        std::fputs("tintwell-host: the effect refused the GPU and rendered on the CPU\n", stderr);
        state_->toldAboutCpu = true;
    }
    return how.error;
}

}  // namespace program
