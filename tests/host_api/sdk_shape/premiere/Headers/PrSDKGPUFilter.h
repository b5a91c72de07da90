// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

using sdk_shape::PrGPUFilter;
using sdk_shape::PrGPUFilterFrameDependency;
using sdk_shape::PrGPUFilterInfo;
using sdk_shape::PrGPUFilterInstance;
using sdk_shape::PrGPUFilterRenderParams;
