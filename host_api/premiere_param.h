// A parameter's value as Premiere Pro's suites give it.
#pragma once

#include "host_api/premiere_types.h"

#pragma pack(push, 1)

enum PrParamType : csSDK_uint32 {
    kPrParamType_Int8 = 1,
    kPrParamType_Int16 = 2,
    kPrParamType_Int32 = 3,
    kPrParamType_Int64 = 4,
    kPrParamType_Float32 = 5,
    kPrParamType_Float64 = 6,
    kPrParamType_Bool = 7,
    kPrParamType_Point = 8,
    kPrParamType_Guid = 9,
    kPrParamType_PrMemoryPtr = 10
};

// mType tells which member holds; 0, in a record that was cleared first, that nothing was written.
struct PrParam {
    PrParamType mType;
    union {
        csSDK_int8 mInt8;
        csSDK_int16 mInt16;
        csSDK_int32 mInt32;
        csSDK_int64 mInt64;
        float mFloat32;
        double mFloat64;
        csSDK_uint8 mBool;
        prFPoint64 mPoint;
        prPluginID mGuid;
        // The receiver's: given back with PrDisposePtr.
        PrMemoryPtr mMemoryPtr;
    };
};
static_assert(sizeof(PrParam) == 41 && alignof(PrParam) == 1);

#pragma pack(pop)
