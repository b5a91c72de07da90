// refused: not above the code: #pragma METAL fp contract(off)
#include <metal_stdlib>
using namespace metal;

#pragma STDC FP_CONTRACT OFF

kernel void K(device float* out [[buffer(0)]], uint2 at [[thread_position_in_grid]]) {
    out[at.x] = 1.0f;
}
