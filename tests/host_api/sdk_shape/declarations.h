// The hosts' interface out of sight: each header of this tree brings the names in sight that the
// real one declares. They are laid out in the folders of the two SDKs.
#pragma once

// Before the namespace, which is not for them.
#include <cstddef>
#include <cstdint>

namespace sdk_shape {
#include "host_api/host_api.h"
}  // namespace sdk_shape

// Macros know no namespaces: each header defines its own.
#undef kPFParamUtilsSuite
#undef kPFPixelFormatSuite
#undef kPFTransitionSuite
#undef kPrSDKGPUDeviceSuite
#undef kPrSDKGPUImageProcessingSuite
#undef kPrSDKMemoryManagerSuite
#undef kPrSDKPPix2Suite
#undef kPrSDKPPixSuite
#undef kPrSDKVideoSegmentSuite
