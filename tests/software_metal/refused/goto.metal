// refused: attempt to use a poisoned identifier
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    again:
    if (n > 3) goto again;
    out[at.x] = 1.0f;
}
