// "Premiere Memory Manager Suite" version 4.
#pragma once

#include "host_api/premiere_types.h"

#pragma pack(push, 1)

#define kPrSDKMemoryManagerSuite "Premiere Memory Manager Suite"
constexpr csSDK_int32 kPrSDKMemoryManagerSuiteVersion = 4;

struct PrSDKMemoryManagerSuite {
    UnusedCallback ReserveMemory;
    UnusedCallback GetMemoryManagerSize;
    UnusedCallback AddBlock;
    UnusedCallback TouchBlock;
    UnusedCallback RemoveBlock;
    UnusedCallback NewPtrClear;
    UnusedCallback NewPtr;
    // In bytes.
    csSDK_uint32 (*GetPtrSize)(PrMemoryPtr p);
    UnusedCallback SetPtrSize;
    UnusedCallback NewHandle;
    UnusedCallback NewHandleClear;
    void (*PrDisposePtr)(PrMemoryPtr p);
    UnusedCallback DisposeHandle;
    UnusedCallback SetHandleSize;
    UnusedCallback GetHandleSize;
    UnusedCallback AdjustReservedMemorySize;
};
static_assert(sizeof(PrSDKMemoryManagerSuite) == 128 && alignof(PrSDKMemoryManagerSuite) == 1);

#pragma pack(pop)
