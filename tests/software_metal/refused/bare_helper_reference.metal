// refused: v: pointer or reference without an address space
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

static void set(float& v) {
    v = 2.0f;
}

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    float x = 1.0f;
    set(x);
    out[at.x] = x;
}
