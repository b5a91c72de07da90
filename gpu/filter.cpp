#include "gpu/filter.h"

#include <atomic>
#include <string>

#include "gpu/device.h"
#include "native/src/log.h"
#include "native/src/lut_cache.h"
#include "native/src/never_destroyed.h"

namespace {

// A block of the host's memory manager, given back at the end of the scope.
class MemoryBlock {
public:
    MemoryBlock(const PrSDKMemoryManagerSuite& suite, PrMemoryPtr memory)
        : suite_(suite), memory_(memory) {}
    ~MemoryBlock() { suite_.PrDisposePtr(memory_); }
    MemoryBlock(const MemoryBlock&) = delete;
    MemoryBlock& operator=(const MemoryBlock&) = delete;

    unsigned long size() const { return suite_.GetPtrSize(memory_); }

private:
    const PrSDKMemoryManagerSuite& suite_;
    PrMemoryPtr memory_;
};

// Null, after a log line, when the block holds something that is no LUT; null for an empty one too.
std::shared_ptr<const tw::Lut3D> decoded(const PrSDKMemoryManagerSuite& suite, PrMemoryPtr memory) {
    const MemoryBlock block(suite, memory);
    std::string err;
    auto lut = tw::embeddedLut(memory, block.size(), &err);
    if (!lut && !err.empty()) tw::logLine("GPU: embedded LUT: %s", err.c_str());
    return lut;
}

void logParamType(int type) {
    constexpr int kLogged = 3;
    static std::atomic<int> seen{0};
    if (seen.fetch_add(1) < kLogged)
        tw::logLine("GPU: LUT param type %d (expected a memory block)", type);
}

std::shared_ptr<const tw::Lut3D> makeIdentity() {
    auto lut = std::make_shared<tw::Lut3D>();
    lut->size = 2;
    lut->data = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 0, 0, 1, 1, 0, 1, 0, 1, 1, 1, 1, 1};
    return lut;
}

}  // namespace

const std::shared_ptr<const tw::Lut3D>& TintwellGPU::Identity() {
    static tw::NeverDestroyed<std::shared_ptr<const tw::Lut3D>> identity(makeIdentity());
    return *identity;
}

prSuiteError TintwellGPU::Initialize(PrGPUFilterInstance* instance) {
    const prSuiteError error = PrGPUFilterBase::Initialize(instance);
    if (error < 0) return error;
    // So it is, too, when the host has no word of the device or no suite to ask.
    if (!deviceInfo_.outMeetsMinimumRequirementsForAcceleration) {
        tw::logLine("GPU: device %u below minimum requirements; CPU render", deviceIndex_);
        return suiteError_Fail;
    }
    // Those that frames and parameters need; the others are acquired for later.
    if (!ppix_ || !memory_ || !videoSegment_) return suiteError_Fail;
    ReadLut(0);
    twgpu::Device& device = twgpu::DeviceFor(deviceIndex_);
    const std::lock_guard lock(device.mutex);
    const bool ready = twgpu::prepare(device, deviceIndex_, deviceInfo_);
    return ready ? suiteError_NoError : suiteError_Fail;
}

PrParam TintwellGPU::param(csSDK_int32 index, PrTime time) const {
    PrParam value = {};
    videoSegment_->GetParam(nodeID_, index, time, &value);
    return value;
}

void TintwellGPU::ReadLut(PrTime time) {
    lutRead_ = true;
    const PrParam value = param(kLut, time);
    if (value.mType == kPrParamType_PrMemoryPtr && value.mMemoryPtr) {
        lut_ = decoded(*memory_, value.mMemoryPtr);
    } else if (value.mType != 0) {
        logParamType(static_cast<int>(value.mType));
    }
}
