// What Premiere Pro calls: its only way into the GPU side of the module.
#pragma once

#include "gpu/gpu_filter_interface.h"
#include "native/src/export.h"

// The module has one filter, index 0. Start-up: fills both records and returns 0; a higher index
// gives suiteError_InvalidParms with the callbacks filled in; one below 0 is raised by one.
// Shutting down: does nothing. Never throws.
extern "C" TW_EXPORT prSuiteError xGPUFilterEntry(csSDK_uint32 inHostInterfaceVersion,
                                                  csSDK_int32* ioIndex, prBool inStartup,
                                                  piSuitesPtr piSuites, PrGPUFilter* outFilter,
                                                  PrGPUFilterInfo* outFilterInfo);
