// The same header is in both SDKs.
#pragma once

#include "tests/host_api/sdk_shape/effects/Headers/PrSDKAESupport.h"
