// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

using sdk_shape::prSuiteError;
using sdk_shape::suiteError_Fail;
using sdk_shape::suiteError_InvalidParms;
using sdk_shape::suiteError_NoError;
using sdk_shape::suiteError_NotImplemented;
