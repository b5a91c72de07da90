// The compute kernel: native/src/engine/sampler.cpp and native/src/engine/probe.cpp once more, step
// for step and in the same order, for one pixel a thread. A change there is a change here. Pixels are
// BGRA.
//
// The build puts gpu_args.h in the place of its include line, defines TW_FUSED_MUL_ADD in front, and
// keeps the result as text in the plug-in, which has the device compile it, fast maths off.
#include <metal_stdlib>
using namespace metal;

// Apple's compiler fuses a product and a sum that stand in one expression even with fast maths off.
// Either line stops that, the first one in Apple's own words; where both are unknown, mulAdd below
// is still fused or kept apart as written.
#pragma METAL fp contract(off)
#pragma STDC FP_CONTRACT OFF

#include "native/src/gpu_args.h"

// a * b + c as native/src/engine/mul_add.h has it for the processor beside the device: rounded once
// where that fuses, twice elsewhere. Apart, the product has a statement of its own.
static float mulAdd(float a, float b, float c) {
#if TW_FUSED_MUL_ADD
    return fma(a, b, c);
#else
    const float product = a * b;
    return product + c;
#endif
}

// Where an input value falls on one axis of the lattice: between points `cell` and `cell` + 1.
struct AxisPosition {
    int cell;        // 0 .. size - 2
    float fraction;  // 0 .. 1, 1 only at the top of the domain
};

static AxisPosition locate(float value, float domainMin, float domainMax, int size) {
    float u = (value - domainMin) / (domainMax - domainMin);
    if (u > 1.0f) u = 1.0f;
    // Not a number counts as the bottom of the domain.
    if (!(u >= 0.0f)) u = 0.0f;
    const float t = u * float(size - 1);
    AxisPosition position;
    position.cell = min(int(t), size - 2);
    position.fraction = t - float(position.cell);
    return position;
}

// The tetrahedron of a cell that holds a colour. Its corners are the cell's lowest point, two more
// (as offsets from it) and the cell's highest point, with one weight each in that order.
struct Tetrahedron {
    int first;
    int second;
    float w0, w1, w2, w3;
};

static Tetrahedron corners(int first, int second, float w0, float w1, float w2, float w3) {
    Tetrahedron t;
    t.first = first;
    t.second = second;
    t.w0 = w0;
    t.w1 = w1;
    t.w2 = w2;
    t.w3 = w3;
    return t;
}

// red, green, blue: the offsets of one step along each axis. The comparisons are strict exactly as
// they stand: colours with equal fractions must fall into the same tetrahedron here and on the CPU.
static Tetrahedron choose(float fr, float fg, float fb, int red, int green, int blue) {
    if (fr > fg) {
        if (fg > fb) return corners(red, red + green, 1.0f - fr, fr - fg, fg - fb, fb);
        if (fr > fb) return corners(red, red + blue, 1.0f - fr, fr - fb, fb - fg, fg);
        return corners(blue, red + blue, 1.0f - fb, fb - fr, fr - fg, fg);
    }
    if (fb > fg) return corners(blue, green + blue, 1.0f - fb, fb - fg, fg - fr, fr);
    if (fb > fr) return corners(green, green + blue, 1.0f - fg, fg - fb, fb - fr, fr);
    return corners(green, red + green, 1.0f - fg, fg - fr, fr - fb, fb);
}

// One channel of the LUT's colour; `lowest` is that channel of the cell's lowest point.
static float weigh(device const float* lowest, Tetrahedron t, int highest) {
    float sum = t.w1 * lowest[t.first];
    sum = mulAdd(t.w0, lowest[0], sum);
    sum = mulAdd(t.w2, lowest[t.second], sum);
    return mulAdd(t.w3, lowest[highest], sum);
}

static float blend(float in, float mapped, float amount) {
    return mulAdd(mapped - in, amount, in);
}

static float4 grade(float4 in, device const float* lut, constant twgpu::LutKernelArgs& args) {
    const AxisPosition r = locate(in.z, args.dmin[0], args.dmax[0], args.size);
    const AxisPosition g = locate(in.y, args.dmin[1], args.dmax[1], args.size);
    const AxisPosition b = locate(in.x, args.dmin[2], args.dmax[2], args.size);

    const int red = 3;
    const int green = args.size * 3;
    const int blue = args.size * args.size * 3;
    const Tetrahedron t = choose(r.fraction, g.fraction, b.fraction, red, green, blue);

    device const float* lowest = lut + (b.cell * blue + g.cell * green + r.cell * red);
    const int highest = red + green + blue;
    return float4(blend(in.x, weigh(lowest + 2, t, highest), args.amount),
                  blend(in.y, weigh(lowest + 1, t, highest), args.amount),
                  blend(in.z, weigh(lowest, t, highest), args.amount), in.w);
}

// The calibration pattern's colour at a pixel: patches run left to right, then top to bottom, red
// fastest; what lies past the last patch is black.
static float4 patch(uint2 at, constant twgpu::LutKernelArgs& args) {
    const long column = long(at.x) * long(args.probeCols) / long(args.width);
    const long row = long(at.y) * long(args.probeRows) / long(args.height);
    const long cell = column + row * long(args.probeCols);
    const long n = long(args.probe);
    if (cell >= n * n * n) return float4(0.0f, 0.0f, 0.0f, 1.0f);
    const float k = 1.0f / float(n - 1);
    return float4(k * float(cell / (n * n)), k * float(cell / n % n), k * float(cell % n), 1.0f);
}

static float4 load(device const float4* pixels, ulong index, int is16f) {
    if (is16f != 0) return float4(((device const half4*)pixels)[index]);
    return pixels[index];
}

static void store(device float4* pixels, ulong index, int is16f, float4 colour) {
    if (is16f != 0) {
        ((device half4*)pixels)[index] = half4(colour);
    } else {
        pixels[index] = colour;
    }
}

// src and dst may be one buffer: a thread reads and writes its own pixel only.
kernel void TintwellLut(device const float4* src [[buffer(0)]],
                        device float4* dst [[buffer(1)]],
                        device const float* lut [[buffer(2)]],
                        constant twgpu::LutKernelArgs& args [[buffer(3)]],
                        uint2 at [[thread_position_in_grid]]) {
    // The last thread groups reach over the frame's edges.
    if (at.x >= uint(args.width) || at.y >= uint(args.height)) return;
    const ulong from = ulong(at.y) * ulong(args.srcPitch) + ulong(at.x);
    const ulong to = ulong(at.y) * ulong(args.dstPitch) + ulong(at.x);
    if (args.probe > 0) {
        store(dst, to, args.is16f, patch(at, args));
        return;
    }
    const float4 in = load(src, from, args.is16f);
    store(dst, to, args.is16f, grade(in, lut, args));
}
