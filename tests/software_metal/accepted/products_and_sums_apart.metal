#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

static float mulAdd(float a, float b, float c) {
    return a * b + c;
}

kernel void K(device float* out [[buffer(0)]], uint2 at [[thread_position_in_grid]]) {
    const float product = out[0] * out[1];
    const uint place = at.x * 2u + 1u;
    out[place] = product + out[2 * 3 + 1];
    out[at.x] = mulAdd(out[0] * 2.0f, out[1], out[2]) + out[3];
    out[0] = (out[1] - out[2]) * out[3];
}
