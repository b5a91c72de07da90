// Parameter values as GPU filters read them.
#pragma once

#include <cstdint>
#include <vector>

#include "host_api/host_api.h"

namespace host_sim {

class Instance;

// One value. With type kPrParamType_PrMemoryPtr it is a memory block, else a number; type 0 is no
// value.
struct GpuValue {
    csSDK_uint32 type = 0;
    double number = 0.0;
    std::vector<std::uint8_t> bytes = {};  // of the block
    bool nullBlock = false;                // a block's type without a block
};

// In the order of the params array without the input layer.
using GpuValues = std::vector<GpuValue>;

// The instance's values as they are now: sliders as 64-bit floats, arbitrary values as blocks of
// their flattened form, which the effect is asked for. Other parameters have no value. Throws
// SimError when flattening fails.
GpuValues gpuValuesOf(const Instance& instance);

}  // namespace host_sim
