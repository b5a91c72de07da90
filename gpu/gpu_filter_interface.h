// Premiere Pro's GPU filter interface: the one place that decides where its declarations come from,
// as effect/effect_interface.h is for the effect's.
#pragma once

#ifdef TINTWELL_HOST_SDK
// SPBasic.h goes first: PrSDKAESupport.h counts on it.
// clang-format off
#include <SPBasic.h>
#include <PrSDKAESupport.h>
#include <PrSDKGPUDeviceSuite.h>
#include <PrSDKGPUFilter.h>
#include <PrSDKGPUImageProcessingSuite.h>
#include <PrSDKMALErrors.h>
#include <PrSDKMemoryManagerSuite.h>
#include <PrSDKPixelFormat.h>
#include <PrSDKPlugSuites.h>
#include <PrSDKPPix2Suite.h>
#include <PrSDKPPixSuite.h>
#include <PrSDKTypes.h>
#include <PrSDKVideoSegmentSuite.h>
// clang-format on
#else
#include "host_api/host_api.h"
#endif
