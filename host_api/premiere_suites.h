// The way from a GPU filter instance to the basic suite.
#pragma once

#include "host_api/basic_suite.h"
#include "host_api/premiere_types.h"

#pragma pack(push, 1)

struct PlugUtilFuncs {
    void* unused1;
    UnusedCallback getSerialNumber;
    UnusedCallback getFileTimebase;
    UnusedCallback getFileVideo;
    UnusedCallback getFileAudioSecond;
    void* unused2;
    UnusedCallback getFileVideoBounds;
    // The host's; valid as long as the instance.
    SPBasicSuite* (*getSPBasicSuite)();
    UnusedCallback getFileExtString;
};
static_assert(sizeof(PlugUtilFuncs) == 72 && alignof(PlugUtilFuncs) == 1);
typedef PlugUtilFuncs* PlugUtilFuncsPtr;

// The tables that are void pointers here are not used by this system; a host may leave them null.
struct piSuites {
    int piInterfaceVer;
    void* memFuncs;
    void* windFuncs;
    void* ppixFuncs;
    PlugUtilFuncsPtr utilFuncs;
    void* timelineFuncs;
};
static_assert(sizeof(piSuites) == 44 && alignof(piSuites) == 1);
typedef piSuites* piSuitesPtr;

constexpr int PR_PISUITES_VERSION = 9;

#pragma pack(pop)
