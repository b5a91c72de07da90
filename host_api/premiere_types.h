// Scalars and small records of Premiere Pro's side of the interface. All of its records are packed
// without padding: members may lie unaligned, so they are copied, never pointed to.
#pragma once

#include "host_api/types.h"

#pragma pack(push, 1)

typedef char csSDK_int8;
typedef std::uint8_t csSDK_uint8;
typedef std::int16_t csSDK_int16;
typedef int csSDK_int32;
typedef unsigned int csSDK_uint32;
// Spelled without the fixed-width names: those mean another type on each system, and with it
// another mangled name.
typedef long long csSDK_int64;
typedef unsigned long long csSDK_size_t;
typedef csSDK_int32 prSuiteError;
typedef csSDK_int32 prBool;
typedef csSDK_int32 prFieldType;
typedef csSDK_int32 PrTimelineID;
typedef csSDK_int64 PrTime;
typedef char* PrMemoryPtr;  // of the memory manager suite

// Success is every code that is not negative.
enum : prSuiteError {
    suiteError_NoError = 0,
    suiteError_Fail = -2147483647 - 1,        // 0x80000000
    suiteError_InvalidParms = -2147483647,    // 0x80000001
    suiteError_OutOfMemory = -2147483646,     // 0x80000002
    suiteError_NotImplemented = -2147483644,  // 0x80000004
    suiteError_IDNotValid = -2147483643       // 0x80000005
};

enum PrRenderQuality : csSDK_uint32 { kPrRenderQuality_High = 3 };

enum pmFieldDisplay : csSDK_uint32 { pmFieldDisplay_ShowBothFields = 2 };

// All zero: no string.
struct PrSDKString {
    csSDK_int64 opaque[2];
};
static_assert(sizeof(PrSDKString) == 16 && alignof(PrSDKString) == 1);

// The form of macOS; elsewhere the members are wider and in another order.
struct prRect {
    csSDK_int16 top;
    csSDK_int16 left;
    csSDK_int16 bottom;
    csSDK_int16 right;
};
static_assert(sizeof(prRect) == 8 && alignof(prRect) == 1);

struct prFPoint64 {
    double x;
    double y;
};
static_assert(sizeof(prFPoint64) == 16 && alignof(prFPoint64) == 1);

// Text of an identifier with its terminating zero.
struct prPluginID {
    char mGUID[37];
};
static_assert(sizeof(prPluginID) == 37 && alignof(prPluginID) == 1);

// A frame. Looked into through the PPix suites only.
struct PPix {
    prRect bounds;
    csSDK_int32 rowbytes;
    csSDK_int32 bitsperpixel;
    void* pix;
    void* reserved[32];
};
static_assert(sizeof(PPix) == 280 && alignof(PPix) == 1);
typedef PPix** PPixHand;

#pragma pack(pop)
