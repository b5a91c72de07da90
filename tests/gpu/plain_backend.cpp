// The compute backend on the software device's compiler alone, without Metal's interface: for
// processors that have no Objective-C++ here.
#include <memory>
#include <string>
#include <vector>

#include "gpu/kernel_source.h"
#include "gpu/metal_lut.h"
#include "software_metal/dispatch.h"
#include "software_metal/ledger.h"

namespace {

struct Object {
    Object() = default;
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
};

struct Pipeline : Object {
    std::shared_ptr<const software_metal::KernelModule> module;
};

struct Buffer : Object {
    std::vector<unsigned char> bytes;
};

void* contents(void* buffer) {
    return static_cast<Buffer*>(static_cast<Object*>(buffer))->bytes.data();
}

}  // namespace

namespace twmetal {

void* CreatePipeline(void* /*device*/, std::string* err) {
    const std::string other = software_metal::faults().source;
    std::string words;
    auto pipeline = std::make_unique<Pipeline>();
    pipeline->module =
        software_metal::compileKernels(other.empty() ? twgpu::kKernelSource : other, false, &words);
    if (pipeline->module) return static_cast<Object*>(pipeline.release());
    if (err) *err = words;
    return nullptr;
}

void* NewBuffer(void* /*device*/, const void* bytes, unsigned long length) {
    const auto* from = static_cast<const unsigned char*>(bytes);
    auto buffer = std::make_unique<Buffer>();
    buffer->bytes.assign(from, from + length);
    return static_cast<Object*>(buffer.release());
}

bool Launch(void* /*queue*/, void* pipeline, void* src, void* dst, void* lut,
            const twgpu::LutKernelArgs& args, bool /*wait*/, std::string* /*err*/,
            double* /*gpuMs*/) {
    twgpu::LutKernelArgs copy = args;
    software_metal::Dispatch dispatch;
    dispatch.module = static_cast<Pipeline*>(static_cast<Object*>(pipeline))->module;
    dispatch.kernel = &dispatch.module->kernels.front();
    dispatch.slots[0] = contents(src);
    dispatch.slots[1] = contents(dst);
    dispatch.slots[2] = contents(lut);
    dispatch.slots[3] = &copy;
    const auto groups = [](int pixels) { return static_cast<unsigned>((pixels + 15) / 16); };
    dispatch.groups = {groups(args.width), groups(args.height), 1};
    dispatch.threads = {16, 16, 1};
    software_metal::run(dispatch);
    return true;
}

void Release(void* object) {
    delete static_cast<Object*>(object);
}

void* DefaultDevice() {
    return static_cast<Object*>(new Object);
}

void* NewQueue(void* /*device*/) {
    return static_cast<Object*>(new Object);
}

std::string DeviceName(void* /*device*/) {
    return "plain";
}

void* Contents(void* buffer) {
    return contents(buffer);
}

}  // namespace twmetal
