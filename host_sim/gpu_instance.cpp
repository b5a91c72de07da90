#include "host_sim/gpu_instance.h"

#include <algorithm>

#include "host_sim/values/call_scope.h"

namespace host_sim {
namespace {

PrGPUFilterInstance recordFor(GpuSide& side, csSDK_int32 node, unsigned device) {
    PrGPUFilterInstance record = {};
    record.piSuites = &side.suites();
    record.inDeviceIndex = device;
    record.inTimelineID = 7;
    record.inNodeID = node;
    return record;
}

PrGPUFilterRenderParams paramsAt(PrTime clipTime) {
    PrGPUFilterRenderParams params = {};
    params.inClipTime = clipTime;
    params.inSequenceTime = clipTime + 1000;
    params.inQuality = kPrRenderQuality_High;
    params.inDownsampleFactorX = params.inDownsampleFactorY = 1.0f;
    params.inRenderPARNum = params.inRenderPARDen = 1;
    params.inRenderField = pmFieldDisplay_ShowBothFields;
    return params;
}

// A frame that the effect may ask about as long as this lives.
class LentFrame {
public:
    LentFrame(GpuSide& side, GpuFrame& frame) : side_(side), frame_(frame) { side_.lend(frame_); }
    ~LentFrame() { side_.withdraw(frame_); }
    LentFrame(const LentFrame&) = delete;
    LentFrame& operator=(const LentFrame&) = delete;

private:
    GpuSide& side_;
    GpuFrame& frame_;
};

}  // namespace

template <class Call>
prSuiteError GpuInstance::send(const char* what, Call call) {
    const CallScope scope(-1, std::string(what) + " of node " + std::to_string(node_));
    prSuiteError error = -1;
    try {
        error = call();
    } catch (...) {
        side_.books().problem("An exception came out of the effect");
    }
    if (!record_.isIntact()) side_.books().problem("The effect wrote beside the instance record");
    return error;
}

GpuInstance::GpuInstance(GpuSide& side, const GpuValues& values, unsigned device)
    : side_(side), node_(side.addNode(values)), record_(recordFor(side, node_, device)) {
    error_ = send("CreateInstance", [&] { return side_.filter().CreateInstance(record_.get()); });
}

GpuInstance::~GpuInstance() {
    if (error_ >= 0) {
        send("DisposeInstance", [&] { return side_.filter().DisposeInstance(record_.get()); });
    }
    const bool isLeft = record_->ioPrivatePluginData != nullptr;
    if (isLeft) side_.books().problemAtEnd("A GPU filter instance left its private pointer behind");
    side_.removeNode(node_);
}

prSuiteError GpuInstance::render(GpuFrame& source, GpuFrame& destination, PrTime clipTime) {
    const LentFrame lentSource(side_, source);
    const PPixHand frames[] = {source.handle()};
    PPixHand out = destination.handle();
    const PrGPUFilterRenderParams params = paramsAt(clipTime);
    const auto call = [&] {
        return send("Render",
                    [&] { return side_.filter().Render(record_.get(), &params, frames, 1, &out); });
    };
    if (&source == &destination) return call();
    const LentFrame lentDestination(side_, destination);
    return call();
}

prSuiteError GpuInstance::render(const PPixHand* frames, csSDK_size_t count,
                                 PPixHand* destination) {
    const PrGPUFilterRenderParams params = paramsAt(0);
    return send("Render", [&] {
        return side_.filter().Render(record_.get(), &params, frames, count, destination);
    });
}

prSuiteError GpuInstance::frameDependencies() {
    const PrGPUFilterRenderParams params = paramsAt(0);
    csSDK_int32 query = 0;
    Guarded<PrGPUFilterFrameDependency> dependency({});
    return send("GetFrameDependencies", [&] {
        return side_.filter().GetFrameDependencies(record_.get(), &params, &query,
                                                   dependency.get());
    });
}

prSuiteError GpuInstance::precompute() {
    const PrGPUFilterRenderParams params = paramsAt(0);
    return send("Precompute",
                [&] { return side_.filter().Precompute(record_.get(), &params, 0, nullptr); });
}

GpuRender renderOnGpu(GpuSide& side, Instance& effect, const Frame& input, Frame& output,
                      unsigned device) {
    GpuInstance filter(side, gpuValuesOf(effect), device);
    if (filter.error() >= 0) {
        GpuFrame source(side.device(device), PrPixelFormat_GPU_BGRA_4444_32f, input);
        GpuFrame destination(side.device(device), PrPixelFormat_GPU_BGRA_4444_32f, input.width(),
                             input.height(), {.padding = 5});
        if (filter.render(source, destination) >= 0) {
            side.wait();
            if (const auto place = destination.damage())
                side.books().problemAtEnd("The effect wrote outside a GPU frame, at " + *place);
            output = destination.download();
            return {true, PF_Err_NONE};
        }
    }
    return {false, effect.render(input, output).error};
}

}  // namespace host_sim
