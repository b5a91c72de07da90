#include "host_sim/refusals.h"

namespace host_sim {

PF_Err Refusals::Switch::answer() {
    if (callsLeft == 0) return always;
    --callsLeft;
    return callsLeft == 0 ? once : always;
}

void Refusals::set(Refusal which, int nth, PF_Err error) {
    const std::lock_guard lock(mutex_);
    state_.of(which) = nth == 0 ? Switch{0, error, 0} : Switch{nth, 0, error};
}

PF_Err Refusals::answer(Refusal which) {
    const std::lock_guard lock(mutex_);
    return state_.of(which).answer();
}

void Refusals::failAllocation(int nth) {
    set(Refusal::kAllocation, nth);
}

void Refusals::failAllAllocations(bool on) {
    set(Refusal::kAllocation, 0, on ? kRefused : 0);
}

void Refusals::failResize(int nth) {
    set(Refusal::kResize, nth);
}

void Refusals::failLock(int nth) {
    set(Refusal::kLock, nth);
}

void Refusals::failAddParam(PF_Err error, int nth) {
    set(Refusal::kAddParam, nth, error);
}

void Refusals::failRegistration(A_Err error, int nth) {
    set(Refusal::kRegistration, nth, error);
}

void Refusals::failPixelFormat(PF_Err error, int nth) {
    set(Refusal::kPixelFormat, nth, error);
}

void Refusals::failParamUpdate(PF_Err error, int nth) {
    set(Refusal::kParamUpdate, nth, error);
}

void Refusals::failAcquisition(int nth) {
    set(Refusal::kAcquisition, nth);
}

void Refusals::nullAcquisition(int nth) {
    set(Refusal::kSuiteTable, nth);
}

void Refusals::failGpuCall(int nth) {
    set(Refusal::kGpuCall, nth);
}

void Refusals::hideSuite(const std::string& name) {
    const std::lock_guard lock(mutex_);
    state_.hidden.insert(name);
}

void Refusals::nullSuite(const std::string& name) {
    const std::lock_guard lock(mutex_);
    state_.nulls.insert(name);
}

void Refusals::refuseSuite(const std::string& name) {
    const std::lock_guard lock(mutex_);
    state_.refused.insert(name);
}

void Refusals::withoutBasicSuite(bool on) {
    const std::lock_guard lock(mutex_);
    state_.noBasicSuite = on;
}

void Refusals::replaceHandleOnResize(bool on) {
    const std::lock_guard lock(mutex_);
    state_.replaceHandles = on;
}

void Refusals::clear() {
    const std::lock_guard lock(mutex_);
    state_ = State();
}

bool Refusals::isDue(Refusal which) const {
    const std::lock_guard lock(mutex_);
    return state_.switches[static_cast<std::size_t>(which)].callsLeft > 0;
}

bool Refusals::refusesAllocation() {
    return answer(Refusal::kAllocation) != 0;
}

bool Refusals::refusesResize() {
    return answer(Refusal::kResize) != 0;
}

bool Refusals::refusesLock() {
    return answer(Refusal::kLock) != 0;
}

bool Refusals::refusesAcquisition() {
    return answer(Refusal::kAcquisition) != 0;
}

bool Refusals::nullsAcquisition() {
    return answer(Refusal::kSuiteTable) != 0;
}

bool Refusals::refusesGpuCall() {
    return answer(Refusal::kGpuCall) != 0;
}

PF_Err Refusals::addParamError() {
    return answer(Refusal::kAddParam);
}

A_Err Refusals::registrationError() {
    return answer(Refusal::kRegistration);
}

PF_Err Refusals::pixelFormatError() {
    return answer(Refusal::kPixelFormat);
}

PF_Err Refusals::paramUpdateError() {
    return answer(Refusal::kParamUpdate);
}

bool Refusals::hidesSuite(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    return state_.hidden.contains(name);
}

bool Refusals::nullsSuite(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    return state_.nulls.contains(name);
}

bool Refusals::refusesSuite(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    return state_.refused.contains(name);
}

bool Refusals::hidesBasicSuite() const {
    const std::lock_guard lock(mutex_);
    return state_.noBasicSuite;
}

bool Refusals::replacesHandles() const {
    const std::lock_guard lock(mutex_);
    return state_.replaceHandles;
}

}  // namespace host_sim
