// refused: table: a variable outside functions must be constant
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

static float table = 1.0f;

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    table = float(n);
    out[at.x] = table;
}
