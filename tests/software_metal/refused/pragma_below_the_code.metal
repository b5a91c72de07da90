// refused: not above the code: #pragma STDC FP_CONTRACT OFF
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)

kernel void K(device float* out [[buffer(0)]], uint2 at [[thread_position_in_grid]]) {
    out[at.x] = 1.0f;
}
#pragma STDC FP_CONTRACT OFF
