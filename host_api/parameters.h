// Parameter definitions: how an effect declares its parameters, and how a host hands their values
// back in every command's params array.
#pragma once

#include "host_api/types.h"
#include "host_api/world.h"

#pragma pack(push, 8)

typedef A_long PF_ParamType;
typedef A_long PF_ParamFlags;
typedef A_long PF_ParamUIFlags;
typedef A_long PF_ChangeFlags;
typedef A_short PF_ValueDisplayFlags;
typedef A_u_long PF_FSliderFlags;
typedef PF_Handle PF_ArbitraryH;

enum : PF_ParamType {
    PF_Param_LAYER = 0,
    PF_Param_FLOAT_SLIDER = 10,
    PF_Param_ARBITRARY_DATA = 11,
    PF_Param_BUTTON = 15
};

enum : PF_ParamFlags {
    PF_ParamFlag_NONE = 0,
    PF_ParamFlag_CANNOT_TIME_VARY = 0x2,
    // A change by the user is reported with PF_Cmd_USER_CHANGED_PARAM. Buttons must have it.
    PF_ParamFlag_SUPERVISE = 0x40
};

enum : PF_ParamUIFlags {
    PF_PUI_NONE = 0,
    PF_PUI_TOPIC = 0x1,
    PF_PUI_CONTROL = 0x2,
    // No row in the effect's panel. After Effects refuses an arbitrary-data parameter that has none
    // of these three.
    PF_PUI_NO_ECW_UI = 0x8
};

enum : PF_ChangeFlags { PF_ChangeFlag_NONE = 0, PF_ChangeFlag_CHANGED_VALUE = 1 };

enum : PF_ValueDisplayFlags { PF_ValueDisplayFlag_NONE = 0, PF_ValueDisplayFlag_PERCENT = 1 };

enum : A_short { PF_Precision_INTEGER = 0, PF_Precision_TENTHS = 1 };

enum : PF_FSliderFlags { PF_FSliderFlag_NONE = 0 };

struct PF_FloatSliderDef {
    PF_FpLong value;
    PF_FpLong phase;
    A_char value_desc[PF_MAX_PARAM_DESCRIPTION_LEN + 1];
    PF_FpShort valid_min;
    PF_FpShort valid_max;
    PF_FpShort slider_min;
    PF_FpShort slider_max;
    PF_FpShort dephault;
    A_short precision;  // decimal places shown
    PF_ValueDisplayFlags display_flags;
    PF_FSliderFlags fs_flags;
    PF_FpShort curve_tolerance;
    PF_Boolean useExponent;
    PF_FpShort exponent;
};
static_assert(sizeof(PF_FloatSliderDef) == 88 && alignof(PF_FloatSliderDef) == 8);

struct PF_ArbitraryDef {
    A_short id;
    A_short pad;
    // Made by the effect, the host's from the moment that add_param took the definition.
    PF_ArbitraryH dephault;
    // Null in add_param. In commands the host's handle, or null; it arrives locked by the host.
    PF_ArbitraryH value;
    void* refconPV;  // passed back in every arbitrary-data callback
};
static_assert(sizeof(PF_ArbitraryDef) == 32 && alignof(PF_ArbitraryDef) == 8);

struct PF_ButtonDef {
    PF_ParamValue value;
    union {
        // Text on the button. add_param copies it; PF_UpdateParamUI keeps the address.
        const A_char* namesptr;
    } u;
};
static_assert(sizeof(PF_ButtonDef) == 16 && alignof(PF_ButtonDef) == 8);

// Which member counts is told by PF_ParamDef::param_type. The hosts know more kinds; the input
// layer is the largest of all.
union PF_ParamDefUnion {
    PF_LayerDef ld;
    PF_FloatSliderDef fs_d;
    PF_ArbitraryDef arb_d;
    PF_ButtonDef button_d;
};
static_assert(sizeof(PF_ParamDefUnion) == 120 && alignof(PF_ParamDefUnion) == 8);

// To be cleared to zero bytes before it is filled for add_param.
struct PF_ParamDef {
    union {
        A_long id;                    // in add_param: the persistent identity, 0 for none
        PF_ChangeFlags change_flags;  // in PF_Cmd_USER_CHANGED_PARAM: set by the effect
    } uu;
    PF_ParamUIFlags ui_flags;
    A_short ui_width;
    A_short ui_height;
    PF_ParamType param_type;
    A_char name[PF_MAX_EFFECT_PARAM_NAME_LEN + 1];
    PF_ParamFlags flags;
    A_long unused;
    PF_ParamDefUnion u;
};
static_assert(sizeof(PF_ParamDef) == 176 && alignof(PF_ParamDef) == 8);

typedef PF_ParamDef* PF_ParamDefPtr;
typedef PF_ParamDef** PF_ParamList;

#pragma pack(pop)
