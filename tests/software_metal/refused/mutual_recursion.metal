// refused: f: recursion
#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

static int g(int i);
static int f(int i) {
    return i < 2 ? i : g(i - 1);
}
static int g(int i) {
    return f(i - 1);
}

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    out[at.x] = float(f(n));
}
