#include "gpu/entry_point.h"

#include "gpu/filter.h"
#include "gpu/filter_module.h"

prSuiteError xGPUFilterEntry(csSDK_uint32 /*inHostInterfaceVersion*/, csSDK_int32* ioIndex,
                             prBool inStartup, piSuitesPtr /*piSuites*/, PrGPUFilter* outFilter,
                             PrGPUFilterInfo* outFilterInfo) {
    constexpr csSDK_uint32 kInterfaceVersion = 2;
    if (!inStartup) return suiteError_NoError;
    using Module = PrGPUFilterModule<TintwellGPU>;
    outFilter->CreateInstance = Module::CreateInstance;
    outFilter->DisposeInstance = Module::DisposeInstance;
    outFilter->GetFrameDependencies = Module::GetFrameDependencies;
    outFilter->Precompute = Module::Precompute;
    outFilter->Render = Module::Render;
    if (*ioIndex > 0) return suiteError_InvalidParms;
    if (*ioIndex < 0) ++*ioIndex;
    outFilterInfo->outInterfaceVersion = kInterfaceVersion;
    // No name: the filter belongs to this module's own effect.
    outFilterInfo->outMatchName = PrSDKString{};
    return suiteError_NoError;
}
