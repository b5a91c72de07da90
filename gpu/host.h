// Premiere Pro's GPU filter interface: the one place that decides where its declarations come from,
// as effect/host.h is for the effect's.
#pragma once

#ifdef TINTWELL_HOST_SDK
#include <PrSDKAESupport.h>
#include <PrSDKGPUDeviceSuite.h>
#include <PrSDKGPUFilter.h>
#include <PrSDKGPUImageProcessingSuite.h>
#include <PrSDKMemoryManagerSuite.h>
#include <PrSDKPPix2Suite.h>
#include <PrSDKPPixSuite.h>
#include <PrSDKVideoSegmentSuite.h>
#else
#include "host_api/host_api.h"
#endif
