// The effect as Premiere Pro renders it on a GPU.
#pragma once

#include <memory>

#include "gpu/filter_base.h"
#include "native/src/lut_engine.h"

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

    // A frame's memory on the device and its shape.
    struct Frame {
        void* memory = nullptr;
        csSDK_int32 rowBytes = 0;
    };
    // What one render works on.
    struct Job {
        Frame source;
        Frame destination;
        bool is32f = false;
        int width = 0;
        int height = 0;
        float amount = 0.0f;  // 0..1; what the kernel blends by is 0 for a copy or the pattern
    };

    // A LUT of two points that changes nothing, for frames that are copied or get the pattern.
    static const std::shared_ptr<const tw::Lut3D>& Identity();

    // Puts the LUT parameter's value at a clip time into lut_; a value of another type leaves it.
    void ReadLut(PrTime time);
    void decode(PrMemoryPtr block);
    bool hasSuites() const;
    PrParam param(csSDK_int32 index, PrTime time) const;
    float percent(PrTime time) const;
    // Both: false when the host does not tell, upon which the frame fails, before its setup line: a
    // kernel must not run on memory that is not there. Only the format may be unknown.
    bool find(PPixHand handle, Frame& frame) const;
    bool describe(PPixHand source, PPixHand destination, Job& job) const;
    void LogSetup(const Job& job) const;
    // Locks the device: the LUT goes up when it is another one, and the kernel is committed.
    bool launch(const Job& job, const std::shared_ptr<const tw::Lut3D>& lut) const;
    int patternSize() const { return lut_ ? lut_->probe : 0; }

    bool lutRead_ = false;
    std::shared_ptr<const tw::Lut3D> lut_;  // null: none
};
