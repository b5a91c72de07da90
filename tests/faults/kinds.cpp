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

// A refusal by the simulated host; with an error where the call returns one.
Kind hostKind(const std::string& name, Refusal which, PF_Err error = host_sim::kRefused) {
    return {name, [which, error](int nth) { refusals().fail(which, nth, error); },
            [which] { return refusals().isDue(which); }, [] { refusals().clear(); }};
}

}  // namespace

std::vector<Kind> hostKinds() {
    return {libraryKind(kNew, LibraryCall::kNew),
            libraryKind(kThread, LibraryCall::kThreadStart),
            libraryKind(kOpen, LibraryCall::kOpen),
            libraryKind(kRead, LibraryCall::kRead),
            libraryKind(kWrite, LibraryCall::kWrite),
            libraryKind(kClose, LibraryCall::kClose),
            hostKind(kHandle, Refusal::kAllocation),
            hostKind(kLock, Refusal::kLock),
            hostKind(kResize, Refusal::kResize),
            hostKind(kSuite, Refusal::kAcquisition),
            hostKind(kNoTable, Refusal::kSuiteTable),
            hostKind(kGpuCall, Refusal::kGpuCall),
            hostKind(kAddParam, Refusal::kAddParam, kHostError),
            hostKind(kRegister, Refusal::kRegistration, kHostError),
            hostKind(kFormat, Refusal::kPixelFormat, kHostError),
            hostKind(kUpdate, Refusal::kParamUpdate, kHostError)};
}

}  // namespace faults
