// refused: word not allowed: __attribute__
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

__attribute__((noinline)) static void f() {}

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    out[at.x] = 1.0f;
}
