// One instance of the module's GPU filter, and a frame by whichever way it can be rendered.
#pragma once

#include "host_sim/gpu_side.h"
#include "host_sim/values/guarded.h"

namespace host_sim {

// Made for one state of the parameters, as in the host. Problems: an exception out of a callback
// (answered as error -1), a byte written beside a record, a private pointer that is left, canaries
// of frames.
//
// Threads: one at a time for an instance, several instances at once.
class GpuInstance {
public:
    GpuInstance(GpuSide& side, const GpuValues& values, unsigned device = 0);
    ~GpuInstance();
    GpuInstance(const GpuInstance&) = delete;
    GpuInstance& operator=(const GpuInstance&) = delete;

    // CreateInstance's answer; negative: the instance was not made and nothing else is called.
    prSuiteError error() const { return error_; }

    // Source and destination may be one frame. The picture is there after GpuSide::wait.
    prSuiteError render(GpuFrame& source, GpuFrame& destination, PrTime clipTime = 0);
    // The bare callback, for frames that are not there.
    prSuiteError render(const PPixHand* frames, csSDK_size_t count, PPixHand* destination);
    prSuiteError frameDependencies();
    prSuiteError precompute();

private:
    template <class Call>
    prSuiteError send(const char* what, Call call);

    GpuSide& side_;
    csSDK_int32 node_;
    Guarded<PrGPUFilterInstance> record_;
    prSuiteError error_ = -1;
};

struct GpuRender {
    bool onGpu = false;  // else the effect rendered on the CPU
    PF_Err error = 0;    // of the CPU's render
};

// Renders a float frame as the host does: on the device, and through the effect's PF_Cmd_RENDER
// where no filter instance can be made or its render fails.
GpuRender renderOnGpu(GpuSide& side, Instance& effect, const Frame& input, Frame& output,
                      unsigned device = 0);

}  // namespace host_sim
