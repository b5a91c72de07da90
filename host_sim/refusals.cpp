#include "host_sim/refusals.h"

namespace host_sim {
namespace {

// Counts one call down; true for the one that was asked for.
bool reached(int& callsLeft) {
    if (callsLeft == 0) return false;
    --callsLeft;
    return callsLeft == 0;
}

}  // namespace

void Refusals::failAllocation(int nth) {
    const std::lock_guard lock(mutex_);
    state_.allocation = nth;
}

void Refusals::failAllAllocations(bool on) {
    const std::lock_guard lock(mutex_);
    state_.allAllocations = on;
}

void Refusals::failResize(int nth) {
    const std::lock_guard lock(mutex_);
    state_.resize = nth;
}

void Refusals::failLock(int nth) {
    const std::lock_guard lock(mutex_);
    state_.lock = nth;
}

void Refusals::failAddParam(int nth, PF_Err error) {
    const std::lock_guard lock(mutex_);
    state_.addParam = nth;
    state_.addParamError = error;
}

void Refusals::failRegistration(A_Err error) {
    const std::lock_guard lock(mutex_);
    state_.registrationError = error;
}

void Refusals::failPixelFormat(PF_Err error) {
    const std::lock_guard lock(mutex_);
    state_.pixelFormatError = error;
}

void Refusals::failParamUpdate(PF_Err error) {
    const std::lock_guard lock(mutex_);
    state_.paramUpdateError = error;
}

void Refusals::hideSuite(const std::string& name) {
    const std::lock_guard lock(mutex_);
    state_.hidden.insert(name);
}

void Refusals::nullSuite(const std::string& name) {
    const std::lock_guard lock(mutex_);
    state_.nulls.insert(name);
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

bool Refusals::refusesAllocation() {
    const std::lock_guard lock(mutex_);
    return reached(state_.allocation) || state_.allAllocations;
}

bool Refusals::refusesResize() {
    const std::lock_guard lock(mutex_);
    return reached(state_.resize);
}

bool Refusals::refusesLock() {
    const std::lock_guard lock(mutex_);
    return reached(state_.lock);
}

PF_Err Refusals::addParamError() {
    const std::lock_guard lock(mutex_);
    return reached(state_.addParam) ? state_.addParamError : 0;
}

A_Err Refusals::registrationError() const {
    const std::lock_guard lock(mutex_);
    return state_.registrationError;
}

PF_Err Refusals::pixelFormatError() const {
    const std::lock_guard lock(mutex_);
    return state_.pixelFormatError;
}

PF_Err Refusals::paramUpdateError() const {
    const std::lock_guard lock(mutex_);
    return state_.paramUpdateError;
}

bool Refusals::hidesSuite(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    return state_.hidden.contains(name);
}

bool Refusals::nullsSuite(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    return state_.nulls.contains(name);
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
