// Error codes of the effect interface and of the basic suite.
#pragma once

#include "host_api/types.h"

enum : PF_Err {
    PF_Err_NONE = 0,
    PF_Err_OUT_OF_MEMORY = 4,
    PF_Err_INTERNAL_STRUCT_DAMAGED = 512,
    PF_Err_INVALID_INDEX = 513,
    PF_Err_UNRECOGNIZED_PARAM_TYPE = 514,
    PF_Err_INVALID_CALLBACK = 515,
    PF_Err_BAD_CALLBACK_PARAM = 516,
    PF_Err_CANNOT_PARSE_KEYFRAME_TEXT = 518
};

enum : A_Err { A_Err_NONE = 0 };

// Answers of the basic suite.
typedef std::int32_t SPErr;
enum : SPErr {
    kSPNoError = 0,
    kSPUnimplementedError = 0x21494D50,  // '!IMP'
    kSPSuiteNotFoundError = 0x53214664,  // 'S!Fd'
    kSPBadParameterError = 0x5061726D    // 'Parm'
};
