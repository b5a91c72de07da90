#include "host_sim/gpu_side.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "host_sim/gpu_callbacks.h"
#include "host_sim/session.h"
#include "host_sim/values/call_scope.h"
#include "host_sim/values/error.h"

namespace host_sim {
namespace {

std::atomic<GpuSide*> openSide = nullptr;

SPBasicSuite* theBasicSuite() {
    Session& session = Session::called();
    return session.refusals.hidesBasicSuite() ? nullptr : &session.basic;
}

}  // namespace

GpuSide::GpuSide(Host& host, const std::vector<GpuDeviceSettings>& devices)
    : host_(host), memory_(host.books()) {
    for (const GpuDeviceSettings& settings : devices) {
        MetalObject device = newMetalDevice();
        MetalObject queue = newMetalQueue(device);
        devices_.push_back({settings, std::move(device), std::move(queue)});
    }
    utilities_.getSPBasicSuite = theBasicSuite;
    suites_.piInterfaceVer = PR_PISUITES_VERSION;
    suites_.utilFuncs = &utilities_;
    offerGpuSuites(Session::current().suites);
    GpuSide* none = nullptr;
    if (!openSide.compare_exchange_strong(none, this))
        throw SimError("Only one GPU side can be open in a process.");
}

GpuSide::~GpuSide() {
    wait();
    memory_.reportLeftovers();
    openSide = nullptr;
}

GpuSide& GpuSide::called() {
    Session::called();
    return current();
}

GpuSide& GpuSide::current() {
    GpuSide* side = openSide;
    if (side == nullptr) {
        std::fputs("A GPU suite was called while no GPU side is open.\n", stderr);
        std::abort();
    }
    return *side;
}

void GpuSide::wait() const {
    for (const Device& device : devices_)
        waitForQueue(device.queue);
}

prSuiteError GpuSide::callEntry(csSDK_int32& index, prBool startUp, PrGPUFilter& filter,
                                PrGPUFilterInfo& info) {
    const auto entry = reinterpret_cast<PrGPUFilterEntry>(host_.module().symbol("xGPUFilterEntry"));
    const CallScope scope(-1, "xGPUFilterEntry");
    return entry(PrSDKGPUFilterInterfaceVersion2, &index, startUp, &suites_, &filter, &info);
}

void GpuSide::enter() {
    csSDK_int32 index = 0;
    const prSuiteError error = callEntry(index, 1, filter_, info_);
    if (error < 0) throw SimError("The module offers no GPU filter.");
}

void GpuSide::refuseFormats(bool on) {
    const std::lock_guard lock(mutex_);
    refusesFormats_ = on;
}

bool GpuSide::refusesFormats() const {
    const std::lock_guard lock(mutex_);
    return refusesFormats_;
}

void GpuSide::setParamHook(ParamHook hook) {
    const std::lock_guard lock(mutex_);
    paramHook_ = std::move(hook);
}

csSDK_int32 GpuSide::addNode(const GpuValues& values) {
    const std::lock_guard lock(mutex_);
    nodes_[nextNode_] = values;
    return nextNode_++;
}

void GpuSide::removeNode(csSDK_int32 node) {
    const std::lock_guard lock(mutex_);
    nodes_.erase(node);
}

void GpuSide::lend(GpuFrame& frame) {
    const std::lock_guard lock(mutex_);
    frames_[frame.handle()] = &frame;
}

void GpuSide::withdraw(GpuFrame& frame) {
    const std::lock_guard lock(mutex_);
    frames_.erase(frame.handle());
}

GpuFrame* GpuSide::frameOf(PPixHand handle, const char* callback) {
    const std::lock_guard lock(mutex_);
    const auto found = frames_.find(handle);
    if (found != frames_.end()) return found->second;
    books().problem(std::string(callback) + " was given an unknown frame");
    return nullptr;
}

prSuiteError GpuSide::deviceInfo(csSDK_uint32 version, csSDK_uint32 index, PrGPUDeviceInfo* info) {
    if (version != kPrSDKGPUDeviceSuiteVersion || index >= devices_.size()) {
        books().problem("GetDeviceInfo was given the version " + std::to_string(version) +
                        " and the device " + std::to_string(index));
        return suiteError_InvalidParms;
    }
    const Device& device = devices_[index];
    if (!device.settings.hasInfo) return suiteError_Fail;
    *info = {};
    info->outDeviceFramework = static_cast<PrGPUDeviceFramework>(device.settings.framework);
    info->outMeetsMinimumRequirementsForAcceleration = device.settings.meetsRequirements ? 1 : 0;
    info->outDeviceHandle = device.device.get();
    info->outCommandQueueHandle = device.queue.get();
    return suiteError_NoError;
}

prSuiteError GpuSide::param(csSDK_int32 node, csSDK_int32 index, PrTime time, PrParam* param) {
    ParamHook hook;
    GpuValue value;
    {
        const std::lock_guard lock(mutex_);
        hook = paramHook_;
        const auto found = nodes_.find(node);
        if (found == nodes_.end() || index < 0 ||
            static_cast<std::size_t>(index) >= found->second.size()) {
            books().problem("GetParam was given the node " + std::to_string(node) +
                            " and the index " + std::to_string(index));
            return suiteError_IDNotValid;
        }
        value = found->second[static_cast<std::size_t>(index)];
    }
    return hook ? hook(index, time, param) : write(value, param);
}

prSuiteError GpuSide::write(const GpuValue& value, PrParam* param) {
    if (value.type == 0) return suiteError_NoError;
    param->mType = static_cast<PrParamType>(value.type);
    switch (value.type) {
        case kPrParamType_Int32:
            param->mInt32 = static_cast<csSDK_int32>(value.number);
            break;
        case kPrParamType_Float32:
            param->mFloat32 = static_cast<float>(value.number);
            break;
        case kPrParamType_Float64:
            param->mFloat64 = value.number;
            break;
        case kPrParamType_PrMemoryPtr:
            param->mMemoryPtr = value.nullBlock ? nullptr : memory_.allocate(value.bytes);
            break;
        default:
            break;
    }
    return suiteError_NoError;
}

}  // namespace host_sim
