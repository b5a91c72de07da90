// The compute kernel as text, for the device to compile.
#pragma once

namespace twgpu {

// tintwell_lut.metal with gpu_args.h in it: zero-terminated UTF-8 in read-only data, written by the
// build (embed_kernel.cmake).
extern const char kKernelSource[];

}  // namespace twgpu
