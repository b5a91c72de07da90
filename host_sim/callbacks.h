// The callbacks that the effect is given. They carry no context: each finds the open session, and
// calls the book there that answers it.
#pragma once

#include "host_api/basic_suite.h"
#include "host_api/in_data.h"
#include "host_api/param_utils_suite.h"
#include "host_api/pixel_format_suite.h"
#include "host_api/utility_callbacks.h"

namespace host_sim {

// The six handle callbacks, in an otherwise empty table.
_PF_UtilCallbacks utilityCallbacks();

PF_InteractCallbacks interactionCallbacks();

// Its memory functions answer kSPUnimplementedError.
SPBasicSuite basicSuite();

// "PF Pixel Format Suite" version 1.
PF_PixelFormatSuite pixelFormatSuite();

// "PF Param Utils Suite" version 3.
PF_ParamUtilsSuite3 paramUtilsSuite();

}  // namespace host_sim
