// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

using sdk_shape::kPFParamUtilsSuiteVersion3;
using sdk_shape::PF_ParamUtilsSuite3;

#define kPFParamUtilsSuite "PF Param Utils Suite"
