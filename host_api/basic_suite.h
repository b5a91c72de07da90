// The basic suite, through which all other suites are asked for.
#pragma once

#include "host_api/errors.h"
#include "host_api/types.h"

#pragma pack(push, 8)

typedef std::uint8_t SPBoolean;

struct SPBasicSuite {
    // On success *suite is the host's table, which stays valid until the matching release. Each
    // success is answered by one release with the same name and version. On failure *suite is null.
    SPErr (*AcquireSuite)(const char* name, std::int32_t version, const void** suite);
    SPErr (*ReleaseSuite)(const char* name, std::int32_t version);
    SPBoolean (*IsEqual)(const char* token1, const char* token2);
    SPErr (*AllocateBlock)(std::size_t size, void** block);
    SPErr (*FreeBlock)(void* block);
    SPErr (*ReallocateBlock)(void* block, std::size_t newSize, void** newblock);
    SPErr (*Undefined)();
};
static_assert(sizeof(SPBasicSuite) == 56 && alignof(SPBasicSuite) == 8);

#pragma pack(pop)
