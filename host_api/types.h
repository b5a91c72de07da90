// Scalars and small records that the other host records are made of.
#pragma once

#include <cstddef>
#include <cstdint>

#pragma pack(push, 8)

typedef char A_char;
typedef std::uint8_t A_u_char;
typedef std::uint8_t A_Boolean;
typedef std::int16_t A_short;
typedef std::uint16_t A_u_short;
typedef std::int32_t A_long;
typedef std::uint32_t A_u_long;
typedef std::uint64_t A_u_longlong;
typedef double A_FpLong;
typedef float A_FpShort;
typedef A_long A_Err;

typedef A_long PF_Err;
typedef A_long PF_Fixed;  // 16.16
typedef unsigned char PF_Boolean;
typedef double PF_FpLong;
typedef float PF_FpShort;
typedef A_long PF_ParamIndex;
typedef A_long PF_ParamValue;
typedef A_long PF_Quality;
typedef A_long PF_Field;
typedef A_long PF_InFlags;
typedef A_long PF_OutFlags;
typedef A_long PF_OutFlags2;

// Host memory: points to a master pointer, and *handle is the block. The block stays where it is
// only while the handle is locked; a resize may move it.
typedef char** PF_Handle;

// The effect (or one applied instance of it) as the host knows it. Never looked into by the effect;
// null in some arbitrary-data callbacks.
struct PF_ProgressInfo;
typedef PF_ProgressInfo* PF_ProgPtr;

// A callback slot that this system neither calls nor fills in; only its place in a table matters.
typedef void (*UnusedCallback)();

// Longest texts, without the terminating zero; the buffers are one longer.
constexpr A_long PF_MAX_EFFECT_NAME_LEN = 31;
constexpr A_long PF_MAX_EFFECT_PARAM_NAME_LEN = 31;
constexpr A_long PF_MAX_PARAM_DESCRIPTION_LEN = 31;
constexpr A_long PF_MAX_EFFECT_MSG_LEN = 255;

// Version of the effect interface that these headers follow.
constexpr A_long PF_AE_PLUG_IN_VERSION = 13;
constexpr A_long PF_AE_PLUG_IN_SUBVERS = 29;

enum : A_long { PF_Quality_LO = 0, PF_Quality_HI = 1 };

// UPPER and LOWER: the world holds every second line of the frame, at doubled row bytes.
enum : A_long { PF_Field_FRAME = 0, PF_Field_UPPER = 1, PF_Field_LOWER = 2 };

struct PF_SpecVersion {
    A_short major;
    A_short minor;
};
static_assert(sizeof(PF_SpecVersion) == 4 && alignof(PF_SpecVersion) == 2);

struct PF_Point {
    A_long h;
    A_long v;
};
static_assert(sizeof(PF_Point) == 8 && alignof(PF_Point) == 4);

struct PF_LRect {
    A_long left;
    A_long top;
    A_long right;
    A_long bottom;
};
static_assert(sizeof(PF_LRect) == 16 && alignof(PF_LRect) == 4);
typedef PF_LRect PF_Rect;
typedef PF_LRect PF_UnionableRect;

struct PF_RationalScale {
    A_long num;
    A_u_long den;
};
static_assert(sizeof(PF_RationalScale) == 8 && alignof(PF_RationalScale) == 4);

#pragma pack(pop)
