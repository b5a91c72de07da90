#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    const half4 h = half4(float4(1.0f, 2.0f, 3.0f, 4.0f));
    out[at.x] = float4(h).w;
}
