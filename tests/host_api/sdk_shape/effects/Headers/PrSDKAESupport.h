// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

#ifndef SPAPI
#error "the real header needs SPBasic.h before it"
#endif

using sdk_shape::csSDK_int32;
using sdk_shape::csSDK_uint32;
using sdk_shape::kPFPixelFormatSuiteVersion1;
using sdk_shape::PF_PixelFormatSuite1;
using sdk_shape::PF_TransitionSuite;
using sdk_shape::PrSDKString;
using sdk_shape::PrTime;
using sdk_shape::PrTimelineID;

#define kPFPixelFormatSuite "PF Pixel Format Suite"
#define kPFTransitionSuite "PF Transition Suite"
