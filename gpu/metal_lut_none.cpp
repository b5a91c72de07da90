// The compute backend of a build without Metal: every device is one that cannot be used.
#include "gpu/error_text.h"
#include "gpu/metal_lut.h"

namespace twmetal {

void* CreatePipeline(void* /*device*/, std::string* err) {
    twgpu::setErrorText(err, "built without Metal");
    return nullptr;
}

void* NewBuffer(void* /*device*/, const void* /*bytes*/, unsigned long /*length*/) {
    return nullptr;
}

bool Launch(void* /*queue*/, void* /*pipeline*/, void* /*src*/, void* /*dst*/, void* /*lut*/,
            const twgpu::LutKernelArgs& /*args*/, bool /*wait*/, std::string* err,
            double* /*gpuMs*/) {
    twgpu::setErrorText(err, "built without Metal");
    return false;
}

void Release(void* /*object*/) {}

void* DefaultDevice() {
    return nullptr;
}

void* NewQueue(void* /*device*/) {
    return nullptr;
}

std::string DeviceName(void* /*device*/) {
    return {};
}

void* Contents(void* /*buffer*/) {
    return nullptr;
}

}  // namespace twmetal
