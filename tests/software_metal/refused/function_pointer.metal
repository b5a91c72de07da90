// refused: p: function pointer
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

static float f(float x) {
    return x;
}

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    float (*p)(float) = f;
    out[at.x] = p(1.0f);
}
