#include "tests/faults/kinds.h"

#include "host_sim/session.h"
#include "tests/support/failing_calls.h"

namespace faults {
namespace {

using host_sim::Refusal;
using host_sim::Refusals;
using twtest::LibraryCall;

Kind libraryKind(const std::string& name, LibraryCall call) {
    return {name, [call](int nth) { twtest::failCall(call, nth); },
            [call] { return twtest::isFailureDue(call); }, twtest::letCallsPass,
            twtest::canFail(call)};
}

Refusals& refusals() {
    return host_sim::Session::current().refusals;
}

template <class Refuse>
Kind hostKind(const std::string& name, Refusal which, Refuse refuse) {
    return {name, [refuse](int nth) { refuse(refusals(), nth); },
            [which] { return refusals().isDue(which); }, [] { refusals().clear(); }};
}

Kind countedKind(const std::string& name, Refusal which, void (Refusals::*refuse)(int)) {
    return hostKind(name, which, [refuse](Refusals& host, int nth) { (host.*refuse)(nth); });
}

Kind errorKind(const std::string& name, Refusal which, void (Refusals::*refuse)(PF_Err, int)) {
    return hostKind(name, which,
                    [refuse](Refusals& host, int nth) { (host.*refuse)(kHostError, nth); });
}

}  // namespace

std::vector<Kind> hostKinds() {
    return {libraryKind(kNew, LibraryCall::kNew),
            libraryKind(kThread, LibraryCall::kThreadStart),
            libraryKind(kOpen, LibraryCall::kOpen),
            libraryKind(kRead, LibraryCall::kRead),
            libraryKind(kWrite, LibraryCall::kWrite),
            libraryKind(kClose, LibraryCall::kClose),
            countedKind(kHandle, Refusal::kAllocation, &Refusals::failAllocation),
            countedKind(kLock, Refusal::kLock, &Refusals::failLock),
            countedKind(kResize, Refusal::kResize, &Refusals::failResize),
            countedKind(kSuite, Refusal::kAcquisition, &Refusals::failAcquisition),
            countedKind(kNoTable, Refusal::kSuiteTable, &Refusals::nullAcquisition),
            countedKind(kGpuCall, Refusal::kGpuCall, &Refusals::failGpuCall),
            errorKind(kAddParam, Refusal::kAddParam, &Refusals::failAddParam),
            errorKind(kRegister, Refusal::kRegistration, &Refusals::failRegistration),
            errorKind(kFormat, Refusal::kPixelFormat, &Refusals::failPixelFormat),
            errorKind(kUpdate, Refusal::kParamUpdate, &Refusals::failParamUpdate)};
}

}  // namespace faults
