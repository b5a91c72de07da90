// The compute backend: a thin layer over the device interface of the system. Objects of the system
// (device, queue, pipeline, buffer) cross it as untyped handles. A handle that a function here
// gives out owns one reference, which Release gives up; a handle that is passed in stays the
// caller's.
//
// Errors: null or false; *err, when given, is set then and left alone otherwise. Without memory for
// the words it is empty. Only DeviceName throws.
//
// Threads: any; nothing is kept here but the count of asynchronous errors. Callers keep the use of
// one device's pipeline and buffers to one thread at a time.
#pragma once

#include <string>

#include "native/src/export.h"
#include "native/src/gpu_args.h"

namespace twmetal {

// Has the device compile the kernel, fast maths off so that it gives the CPU's picture; takes as
// long as a compiler does. err: "compile: ", "pipeline: " with the system's words or "?", or
// "no TintwellLut function".
TW_EXPORT void* CreatePipeline(void* device, std::string* err);

// A buffer in memory shared with the host, holding a copy of `length` bytes. Null when there is
// none to be had.
TW_EXPORT void* NewBuffer(void* device, const void* bytes, unsigned long length);

// Runs the kernel over args.width x args.height pixels, from buffer src to buffer dst, which may be
// the same one, with the LUT's samples in buffer lut (float32, size^3 * 3, red fastest). Source and
// destination are BGRA rows of args.srcPitch and args.dstPitch pixels.
//
// wait false: returns once the work is committed; what the device finds wrong later goes to the
// log, five times a process at most. A picture without pixels is done at once: true, nothing is
// committed and *gpuMs stays as it is. wait true: returns when the picture is there, or false with
// the device's words; *gpuMs, when given, is then the device's own time in milliseconds. err: "no
// command buffer" when there is no command buffer or no encoder to be had.
TW_EXPORT bool Launch(void* queue, void* pipeline, void* src, void* dst, void* lut,
                      const twgpu::LutKernelArgs& args, bool wait, std::string* err, double* gpuMs);

// Null is ignored.
TW_EXPORT void Release(void* object);

// Not used by the effect itself: what a program needs that is its own host.
TW_EXPORT void* DefaultDevice();
TW_EXPORT void* NewQueue(void* device);
TW_EXPORT std::string DeviceName(void* device);
// Address of a buffer's storage, valid as long as the buffer.
TW_EXPORT void* Contents(void* buffer);

}  // namespace twmetal
