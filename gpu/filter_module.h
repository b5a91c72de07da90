// The host's plain callbacks as calls on one object a filter instance.
#pragma once

#include <memory>

#include "gpu/gpu_filter_interface.h"

namespace twgpu {

// The one place on the GPU side where exceptions end: none may cross into a host. The host renders
// on the CPU then. Nothing is logged, since what went wrong is most likely memory.
template <typename Call>
prSuiteError guarded(Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return suiteError_Fail;
    }
}

}  // namespace twgpu

// Filter: derived from PrGPUFilterBase and default constructible. The host's instance record holds
// its address from a successful CreateInstance to DisposeInstance. A call for an instance that was
// not made fails.
//
// Threads: any, for different instances at once.
template <typename Filter>
class PrGPUFilterModule {
public:
    static prSuiteError CreateInstance(PrGPUFilterInstance* instance) {
        return twgpu::guarded([&] {
            auto filter = std::make_unique<Filter>();
            const prSuiteError error = filter->Initialize(instance);
            if (error >= 0) instance->ioPrivatePluginData = filter.release();
            return error;
        });
    }

    static prSuiteError DisposeInstance(PrGPUFilterInstance* instance) {
        return twgpu::guarded([&] {
            delete static_cast<Filter*>(instance->ioPrivatePluginData);
            instance->ioPrivatePluginData = nullptr;
            return prSuiteError{suiteError_NoError};
        });
    }

    static prSuiteError GetFrameDependencies(PrGPUFilterInstance* instance,
                                             const PrGPUFilterRenderParams* params,
                                             csSDK_int32* queryIndex,
                                             PrGPUFilterFrameDependency* dependencies) {
        return on(instance, [&](Filter& filter) {
            return filter.GetFrameDependencies(params, queryIndex, dependencies);
        });
    }

    static prSuiteError Precompute(PrGPUFilterInstance* instance,
                                   const PrGPUFilterRenderParams* params, csSDK_int32 index,
                                   PPixHand frame) {
        return on(instance,
                  [&](Filter& filter) { return filter.Precompute(params, index, frame); });
    }

    static prSuiteError Render(PrGPUFilterInstance* instance, const PrGPUFilterRenderParams* params,
                               const PPixHand* frames, csSDK_size_t frameCount,
                               PPixHand* outFrame) {
        return on(instance, [&](Filter& filter) {
            return filter.Render(params, frames, frameCount, outFrame);
        });
    }

private:
    template <typename Call>
    static prSuiteError on(PrGPUFilterInstance* instance, Call call) noexcept {
        return twgpu::guarded([&]() -> prSuiteError {
            auto* filter = static_cast<Filter*>(instance->ioPrivatePluginData);
            return filter ? call(*filter) : prSuiteError{suiteError_Fail};
        });
    }
};
