// The GPU side of a program that was built without a device.
#include "tintwell_host/files/failure.h"
#include "tintwell_host/session/gpu_session.h"

namespace program {

struct GpuSession::State {};

GpuSession::GpuSession(host_sim::Host& /*host*/) {
    throw Failure(
        "this program was built without a GPU device: build with TINTWELL_METAL=software");
}

GpuSession::~GpuSession() = default;

PF_Err GpuSession::render(host_sim::Instance& effect, const host_sim::Frame& input,
                          host_sim::Frame& output) {
    return effect.render(input, output).error;
}

}  // namespace program
