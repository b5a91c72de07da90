// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

using sdk_shape::PrPixelFormat;
using sdk_shape::PrPixelFormat_BGRA_4444_32f;
using sdk_shape::PrPixelFormat_BGRA_4444_8u;
