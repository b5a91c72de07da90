// "PF Transition Suite" version 2. Acquired, not called. An effect-side record: naturally aligned.
#pragma once

#include "host_api/types.h"

#pragma pack(push, 8)

#define kPFTransitionSuite "PF Transition Suite"
constexpr A_long kPFTransitionSuiteVersion = 2;

struct PF_TransitionSuite {
    UnusedCallback RegisterTransitionInputParam;
    UnusedCallback RegisterTransitionStartParam;
    UnusedCallback RegisterTransitionEndParam;
};
static_assert(sizeof(PF_TransitionSuite) == 24 && alignof(PF_TransitionSuite) == 8);

#pragma pack(pop)
