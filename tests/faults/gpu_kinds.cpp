#include "software_metal/control.h"
#include "tests/faults/kinds.h"

namespace faults {
namespace {

using software_metal::Faults;

Kind deviceKind(const std::string& name, bool Faults::*which) {
    const auto fail = [which](int nth) {
        Faults faults = software_metal::faults();
        faults.*which = true;
        faults.nth = nth;
        software_metal::setFaults(faults);
    };
    return {name, fail, software_metal::isFaultDue, [] { software_metal::setFaults({}); }};
}

}  // namespace

std::vector<Kind> gpuKinds() {
    std::vector<Kind> kinds = hostKinds();
    kinds.insert(
        kinds.end(),
        {deviceKind(kLibrary, &Faults::noLibrary), deviceKind(kFunction, &Faults::noFunction),
         deviceKind(kPipeline, &Faults::noPipeline), deviceKind(kBuffer, &Faults::noBuffer),
         deviceKind(kCommands, &Faults::noCommandBuffer), deviceKind(kEncoder, &Faults::noEncoder),
         deviceKind(kExecution, &Faults::failExecution)});
    return kinds;
}

}  // namespace faults
