// refused: n: pointer or reference without an address space
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

kernel void K(device float* out [[buffer(0)]], const int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    out[at.x] = float(n);
}
