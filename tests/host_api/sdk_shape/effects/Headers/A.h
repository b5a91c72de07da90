// The names of the real header of this name that the effect uses, and no others.
#pragma once

#include "tests/host_api/sdk_shape/declarations.h"

using sdk_shape::A_Err;
using sdk_shape::A_long;
using sdk_shape::A_u_char;
using sdk_shape::A_u_long;
using sdk_shape::A_u_longlong;
