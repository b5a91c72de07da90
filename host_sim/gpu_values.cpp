#include "host_sim/gpu_values.h"

#include "host_sim/instance.h"
#include "host_sim/session.h"
#include "host_sim/values/error.h"

namespace host_sim {
namespace {

GpuValue valueOf(const Instance& instance, int index, PF_ParamType type) {
    GpuValue value;
    if (type == PF_Param_FLOAT_SLIDER) {
        value.type = kPrParamType_Float64;
        value.number = instance.slider(index);
    }
    if (type == PF_Param_ARBITRARY_DATA && instance.arbitrary(index) != nullptr) {
        const auto flat = instance.flatten(index);
        if (flat.error != PF_Err_NONE) throw SimError("The effect cannot flatten its value.");
        value.type = kPrParamType_PrMemoryPtr;
        value.bytes = flat.value;
    }
    return value;
}

}  // namespace

GpuValues gpuValuesOf(const Instance& instance) {
    const DeclaredParams& params = Session::current().params;
    GpuValues values;
    for (int index = 1; index < params.count(); ++index)
        values.push_back(valueOf(instance, index, params.at(index).definition.param_type));
    return values;
}

}  // namespace host_sim
