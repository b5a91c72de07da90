#include "host_sim/suites/suite_ledger.h"

namespace host_sim {
namespace {

std::string describe(const std::string& name, std::int32_t version) {
    return "suite \"" + name + "\" version " + std::to_string(version);
}

}  // namespace

SuiteLedger::SuiteLedger(Books& books, Refusals& refusals) : books_(books), refusals_(refusals) {}

void SuiteLedger::offer(const std::string& name, std::int32_t version, const void* table) {
    const std::lock_guard lock(mutex_);
    offered_[{name, version}] = table;
}

void SuiteLedger::offerToKeep(const std::string& name, std::int32_t version, const void* table) {
    offer(name, version, table);
    const std::lock_guard lock(mutex_);
    mayStay_.insert({name, version});
}

SPErr SuiteLedger::acquire(const char* name, std::int32_t version, const void** suite) {
    if (name == nullptr || suite == nullptr) {
        books_.problem("AcquireSuite was given a null pointer");
        return kSPBadParameterError;
    }
    *suite = nullptr;
    const std::lock_guard lock(mutex_);
    const Key key(name, version);
    const auto found = offered_.find(key);
    const SuiteAnswer answer = refusals_.suiteAnswer(name);
    const bool isHidden =
        answer == SuiteAnswer::kNotFound || refusals_.answer(Refusal::kAcquisition) != 0;
    if (found == offered_.end() || isHidden) {
        ++uses_[key].refused;
        return kSPSuiteNotFoundError;
    }
    if (answer == SuiteAnswer::kNullTable || refusals_.answer(Refusal::kSuiteTable) != 0) {
        ++uses_[key].refused;
        return kSPNoError;
    }
    *suite = found->second;
    if (answer == SuiteAnswer::kErrorWithTable) {
        ++uses_[key].refused;
        return kSPBadParameterError;
    }
    ++uses_[key].acquired;
    return kSPNoError;
}

SPErr SuiteLedger::release(const char* name, std::int32_t version) {
    if (name == nullptr) {
        books_.problem("ReleaseSuite was given a null pointer");
        return kSPBadParameterError;
    }
    const std::lock_guard lock(mutex_);
    SuiteUse& use = uses_[Key(name, version)];
    if (use.released == use.acquired) {
        books_.problem("The " + describe(name, version) + " was released more often than acquired");
        return kSPBadParameterError;
    }
    ++use.released;
    return kSPNoError;
}

SuiteUse SuiteLedger::use(const std::string& name, std::int32_t version) const {
    const std::lock_guard lock(mutex_);
    const auto found = uses_.find({name, version});
    return found == uses_.end() ? SuiteUse() : found->second;
}

void SuiteLedger::reportLeftovers() {
    const std::lock_guard lock(mutex_);
    for (const auto& [key, use] : uses_) {
        const int left = use.acquired - use.released;
        if (left == 0 || mayStay_.contains(key)) continue;
        books_.problemAtEnd("The " + describe(key.first, key.second) + " was acquired " +
                            std::to_string(use.acquired) + " time(s) and released only " +
                            std::to_string(use.released));
    }
}

}  // namespace host_sim
