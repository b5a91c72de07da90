// The effect as Premiere Pro renders it on a GPU.
#pragma once

#include <memory>

#include "gpu/filter_base.h"
#include "native/src/lut_engine.h"

namespace twgpu {
struct FrameJob;
}

// One object an instance. The LUT is read once, when the instance is made: the host makes a new
// instance whenever a parameter changes.
class TintwellGPU : public PrGPUFilterBase {
public:
    // 0 when the device is ready for frames, else suiteError_Fail; the host then renders on the
    // CPU.
    prSuiteError Initialize(PrGPUFilterInstance* instance) override;

    // 0 once the frame's work is committed to the device's queue, or when there is nothing to do;
    // else suiteError_Fail.
    prSuiteError Render(const PrGPUFilterRenderParams* params, const PPixHand* frames,
                        csSDK_size_t frameCount, PPixHand* outFrame) override;

private:
    // Parameters as the video segment suite numbers them, without the input layer.
    enum : csSDK_int32 { kAmount = 0, kLut = 1 };

    // A LUT of two points that changes nothing, for frames that are copied or get the pattern.
    static const std::shared_ptr<const tw::Lut3D>& Identity();

    // Puts the LUT parameter's value at a clip time into lut_; a value of another type leaves it.
    void ReadLut(PrTime time);
    // One line a change of what is rendered, across all instances.
    void LogSetup(const twgpu::FrameJob& job) const;
    PrParam param(csSDK_int32 index, PrTime time) const;

    bool lutRead_ = false;
    std::shared_ptr<const tw::Lut3D> lut_;  // null: none
};
