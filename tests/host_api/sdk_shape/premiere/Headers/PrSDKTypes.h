// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

using sdk_shape::csSDK_int32;
using sdk_shape::csSDK_size_t;
using sdk_shape::csSDK_uint32;
using sdk_shape::kPrParamType_Float32;
using sdk_shape::kPrParamType_Float64;
using sdk_shape::kPrParamType_Int32;
using sdk_shape::kPrParamType_PrMemoryPtr;
using sdk_shape::PPixHand;
using sdk_shape::prBool;
using sdk_shape::PrMemoryPtr;
using sdk_shape::PrParam;
using sdk_shape::prRect;
using sdk_shape::PrSDKString;
using sdk_shape::PrTimelineID;
