#include "host_sim/values/refusals.h"

namespace host_sim {

PF_Err Refusals::Switch::answer() {
    if (callsLeft == 0) return always;
    --callsLeft;
    return callsLeft == 0 ? once : always;
}

void Refusals::fail(Refusal which, int nth, PF_Err error) {
    const std::lock_guard lock(mutex_);
    state_.of(which) = nth == kEveryCall ? Switch{0, error, 0} : Switch{nth, 0, error};
}

void Refusals::answerSuite(const std::string& name, SuiteAnswer answer) {
    const std::lock_guard lock(mutex_);
    state_.suites[name] = answer;
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

PF_Err Refusals::answer(Refusal which) {
    const std::lock_guard lock(mutex_);
    return state_.of(which).answer();
}

SuiteAnswer Refusals::suiteAnswer(const std::string& name) const {
    const std::lock_guard lock(mutex_);
    const auto found = state_.suites.find(name);
    return found == state_.suites.end() ? SuiteAnswer::kTable : found->second;
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
