// "PF Param Utils Suite" version 3.
#pragma once

#include "host_api/parameters.h"
#include "host_api/types.h"

#pragma pack(push, 8)

#define kPFParamUtilsSuite "PF Param Utils Suite"
constexpr A_long kPFParamUtilsSuiteVersion3 = 3;

struct PF_ParamUtilsSuite3 {
    // Changes how a parameter looks. defP is a changed copy of the definition in params, never the
    // original, and the index is never 0. The host copies the record but keeps the address of a
    // button's text, which must stay valid and unchanged.
    PF_Err (*PF_UpdateParamUI)(PF_ProgPtr effect_ref, PF_ParamIndex param_index,
                               const PF_ParamDef* defP);
    UnusedCallback PF_GetCurrentState;
    UnusedCallback PF_AreStatesIdentical;
    UnusedCallback PF_IsIdenticalCheckout;
    UnusedCallback PF_FindKeyframeTime;
    UnusedCallback PF_GetKeyframeCount;
    UnusedCallback PF_CheckoutKeyframe;
    UnusedCallback PF_CheckinKeyframe;
    UnusedCallback PF_KeyIndexToTime;
};
static_assert(sizeof(PF_ParamUtilsSuite3) == 72 && alignof(PF_ParamUtilsSuite3) == 8);

#pragma pack(pop)
