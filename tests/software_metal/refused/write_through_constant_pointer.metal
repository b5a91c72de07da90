// refused: read-only variable is not assignable
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

kernel void K(device float* out [[buffer(0)]], constant float* c [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    c[0] = 1.0f;
    out[at.x] = 1.0f;
}
