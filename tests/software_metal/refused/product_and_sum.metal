// refused: a product and a sum of floats in one expression
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

kernel void K(device float* out [[buffer(0)]], uint2 at [[thread_position_in_grid]]) {
    out[at.x] = out[0] * out[1] + out[2];
}
