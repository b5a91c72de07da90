// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

#define kPFPixelFormatSuite "PF Pixel Format Suite"
