// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

using sdk_shape::PrSDKPPix2Suite;

#define kPrSDKPPix2Suite "Premiere PPix 2 Suite"
