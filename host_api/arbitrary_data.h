// The record of PF_Cmd_ARBITRARY_CALLBACK: what a host asks of an arbitrary-data parameter's
// values.
#pragma once

#include "host_api/parameters.h"
#include "host_api/types.h"

#pragma pack(push, 8)

typedef A_long PF_FunctionSelector;
typedef A_long PF_ArbCompareResult;
typedef A_long PF_ArbPrintFlags;

enum : PF_FunctionSelector {
    PF_Arbitrary_NEW_FUNC = 0,
    PF_Arbitrary_DISPOSE_FUNC = 1,
    PF_Arbitrary_COPY_FUNC = 2,
    PF_Arbitrary_FLAT_SIZE_FUNC = 3,
    PF_Arbitrary_FLATTEN_FUNC = 4,
    PF_Arbitrary_UNFLATTEN_FUNC = 5,
    PF_Arbitrary_INTERP_FUNC = 6,
    PF_Arbitrary_COMPARE_FUNC = 7,
    PF_Arbitrary_PRINT_SIZE_FUNC = 8,
    PF_Arbitrary_PRINT_FUNC = 9,
    PF_Arbitrary_SCAN_FUNC = 10
};

enum : PF_ArbCompareResult {
    PF_ArbCompare_EQUAL = 0,
    PF_ArbCompare_LESS = 1,
    PF_ArbCompare_MORE = 2,
    PF_ArbCompare_NOT_EQUAL = 3
};

enum : PF_ArbPrintFlags { PF_ArbPrint_NONE = 0 };

// Handles passed in belong to the host and arrive locked by it; they may be null. Handles that the
// effect stores through an ...PH pointer become the host's. Buffers belong to the host and hold
// exactly the stated number of bytes.
struct PF_ArbParamsExtra {
    PF_FunctionSelector which_function;
    A_short id;  // PF_ArbitraryDef::id
    A_short padding;
    union {
        struct {
            void* refconPV;
            PF_ArbitraryH* arbPH;
        } new_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
        } dispose_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH src_arbH;  // null asks for a default value
            PF_ArbitraryH* dst_arbPH;
        } copy_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
            A_u_long* flat_data_sizePLu;
        } flat_size_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
            A_u_long buf_sizeLu;  // what FLAT_SIZE answered
            void* flat_dataPV;
        } flatten_func_params;
        struct {
            void* refconPV;
            A_u_long buf_sizeLu;
            const void* flat_dataPV;
            PF_ArbitraryH* arbPH;
        } unflatten_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH left_arbH;
            PF_ArbitraryH right_arbH;
            PF_FpLong tF;  // 0 at the left value, 1 at the right one
            PF_ArbitraryH* interpPH;
        } interp_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH a_arbH;
            PF_ArbitraryH b_arbH;
            PF_ArbCompareResult* compareP;
        } compare_func_params;
        struct {
            void* refconPV;
            PF_ArbitraryH arbH;
            A_u_long* print_sizePLu;
        } print_size_func_params;
        struct {
            void* refconPV;
            PF_ArbPrintFlags print_flags;
            PF_ArbitraryH arbH;
            A_u_long print_sizeLu;
            A_char* print_bufferPC;
        } print_func_params;
        struct {
            void* refconPV;
            const A_char* bufPC;  // not terminated: the byte count decides
            A_u_long bytes_to_scanLu;
            PF_ArbitraryH* arbPH;  // left alone when the text is refused
        } scan_func_params;
    } u;
};
static_assert(sizeof(PF_ArbParamsExtra) == 48 && alignof(PF_ArbParamsExtra) == 8);

#pragma pack(pop)
