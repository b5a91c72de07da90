// Premiere Pro's GPU side of the simulated host: devices, suites and the module's GPU filter.
//
//   host_sim::GpuSide gpu(host);
//   gpu.enter();
//   host_sim::GpuFrame in(gpu.device(0), PrPixelFormat_GPU_BGRA_4444_32f, picture), ...
//   host_sim::GpuInstance filter(gpu, host_sim::gpuValuesOf(effect));
//   filter.render(in, out);
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <vector>

#include "host_api/host_api.h"
#include "host_sim/gpu/gpu_frame.h"
#include "host_sim/gpu/gpu_memory.h"
#include "host_sim/gpu/metal.h"
#include "host_sim/gpu_values.h"
#include "host_sim/host.h"

namespace host_sim {

// What the host says of a device. In fact each one is a Metal device.
struct GpuDeviceSettings {
    csSDK_uint32 framework = PrGPUDeviceFramework_Metal;
    bool meetsRequirements = true;
    bool hasInfo = true;  // false: GetDeviceInfo fails and writes nothing
};

// At most one in a process, while its host is open. Instances and frames end before it.
//
// Threads: construction, enter() and destruction on one thread; all else from any.
class GpuSide {
public:
    explicit GpuSide(Host& host, const std::vector<GpuDeviceSettings>& devices = {{}});
    // Waits for the devices; memory blocks that are left are problems.
    ~GpuSide();
    GpuSide(const GpuSide&) = delete;
    GpuSide& operator=(const GpuSide&) = delete;

    // Calls the module's entry for filter 0 and keeps its callbacks. Throws SimError when it fails
    // or the module has no such entry.
    void enter();
    // The bare call, with records that are kept out of the way.
    prSuiteError callEntry(csSDK_int32& index, prBool startUp, PrGPUFilter& filter,
                           PrGPUFilterInfo& info);

    const PrGPUFilter& filter() const { return filter_; }
    const PrGPUFilterInfo& info() const { return info_; }
    const MetalObject& device(unsigned index = 0) const { return devices_.at(index).device; }
    // Returns when the devices are through with everything so far.
    void wait() const;
    GpuMemory& memory() { return memory_; }
    Books& books() { return host_.books(); }

    // The frame formats' suite fails, as for a frame that it does not know.
    void refuseFormats(bool on);
    // Called instead of giving a parameter's value; for hosts in trouble. Empty: as always.
    using ParamHook = std::function<prSuiteError(csSDK_int32 index, PrTime time, PrParam*)>;
    void setParamHook(ParamHook hook);

    // For GpuInstance and GpuFrame users: what the suites answer from.
    csSDK_int32 addNode(const GpuValues& values);
    void removeNode(csSDK_int32 node);
    void lend(GpuFrame& frame);
    void withdraw(GpuFrame& frame);
    piSuites& suites() { return suites_; }

    // Answers of the suites. The side that a callback is meant for.
    static GpuSide& current();
    // The same for a callback that has not told of itself yet.
    static GpuSide& called();
    prSuiteError deviceInfo(csSDK_uint32 version, csSDK_uint32 index, PrGPUDeviceInfo* info);
    prSuiteError param(csSDK_int32 node, csSDK_int32 index, PrTime time, PrParam* param);
    GpuFrame* frameOf(PPixHand handle, const char* callback);
    bool refusesFormats() const;
    csSDK_uint32 deviceCount() const { return static_cast<csSDK_uint32>(devices_.size()); }

private:
    struct Device {
        GpuDeviceSettings settings;
        MetalObject device;
        MetalObject queue;
    };

    prSuiteError write(const GpuValue& value, PrParam* param);

    Host& host_;
    std::vector<Device> devices_;
    GpuMemory memory_;
    PrGPUFilter filter_ = {};
    PrGPUFilterInfo info_ = {};
    piSuites suites_ = {};
    PlugUtilFuncs utilities_ = {};

    mutable std::mutex mutex_;
    std::map<csSDK_int32, GpuValues> nodes_;
    std::map<PPixHand, GpuFrame*> frames_;
    csSDK_int32 nextNode_ = 1;
    bool refusesFormats_ = false;
    ParamHook paramHook_;
};

}  // namespace host_sim
