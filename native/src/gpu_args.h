// The compute kernel's arguments. This text is compiled on both sides: by the host's compiler and,
// as part of the kernel's source, by the device's. So it may only say what both languages know.
#pragma once

namespace twgpu {

// 64 bytes, little-endian, no padding; copied into the command stream by value.
struct LutKernelArgs {
    int srcPitch;   // source row length in pixels
    int dstPitch;   // destination row length in pixels
    int is16f;      // 1: pixels are four half floats; 0: four 32-bit floats
    int width;      // pixels a row to process
    int height;     // rows to process
    int size;       // LUT points per axis
    float dmin[3];  // input that meets the first lattice point: red, green, blue
    float dmax[3];  // input that meets the last lattice point
    float amount;   // blend of the LUT's result over the input
    int probe;      // calibration pattern size n; above 0 the pattern is drawn instead
    int probeCols;  // pattern grid columns
    int probeRows;  // pattern grid rows
};

static_assert(sizeof(int) == 4 && sizeof(float) == 4, "fields are 4 bytes");
static_assert(sizeof(LutKernelArgs) == 64, "size");
static_assert(__builtin_offsetof(LutKernelArgs, srcPitch) == 0, "srcPitch");
static_assert(__builtin_offsetof(LutKernelArgs, dstPitch) == 4, "dstPitch");
static_assert(__builtin_offsetof(LutKernelArgs, is16f) == 8, "is16f");
static_assert(__builtin_offsetof(LutKernelArgs, width) == 12, "width");
static_assert(__builtin_offsetof(LutKernelArgs, height) == 16, "height");
static_assert(__builtin_offsetof(LutKernelArgs, size) == 20, "size");
static_assert(__builtin_offsetof(LutKernelArgs, dmin) == 24, "dmin");
static_assert(__builtin_offsetof(LutKernelArgs, dmax) == 36, "dmax");
static_assert(__builtin_offsetof(LutKernelArgs, amount) == 48, "amount");
static_assert(__builtin_offsetof(LutKernelArgs, probe) == 52, "probe");
static_assert(__builtin_offsetof(LutKernelArgs, probeCols) == 56, "probeCols");
static_assert(__builtin_offsetof(LutKernelArgs, probeRows) == 60, "probeRows");

}  // namespace twgpu
