#include <metal_stdlib>
using namespace metal;

#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

struct S {
    float value;
};

static S make(float value) {
    S s;
    s.value = value;
    return s;
}

kernel void K(device float* out [[buffer(0)]],
              constant int& n [[buffer(1)]],
              uint2 at [[thread_position_in_grid]]) {
    const S s = make(1.0f);
    out[at.x] = s.value;
}
