#include "host_sim/suite_ledger.h"

#include <cstring>

#include "host_sim/session.h"

namespace host_sim {
namespace {

std::string describe(const std::string& name, std::int32_t version) {
    return "suite \"" + name + "\" version " + std::to_string(version);
}

SPErr acquireSuite(const char* name, std::int32_t version, const void** suite) {
    return Session::called().suites.acquire(name, version, suite);
}

SPErr releaseSuite(const char* name, std::int32_t version) {
    return Session::called().suites.release(name, version);
}

SPBoolean isEqual(const char* a, const char* b) {
    return std::strcmp(a, b) == 0 ? 1 : 0;
}

SPErr allocateBlock(std::size_t, void**) {
    return kSPUnimplementedError;
}

SPErr freeBlock(void*) {
    return kSPUnimplementedError;
}

SPErr reallocateBlock(void*, std::size_t, void**) {
    return kSPUnimplementedError;
}

SPErr undefined() {
    return kSPUnimplementedError;
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
    const bool refused = refusals_.hidesSuite(name) || refusals_.refusesAcquisition();
    if (found == offered_.end() || refused) {
        ++uses_[key].refused;
        return kSPSuiteNotFoundError;
    }
    if (refusals_.nullsSuite(name) || refusals_.nullsAcquisition()) {
        ++uses_[key].refused;
        return kSPNoError;
    }
    *suite = found->second;
    if (refusals_.refusesSuite(name)) {
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

SPBasicSuite basicSuite() {
    return {acquireSuite, releaseSuite,    isEqual,  allocateBlock,
            freeBlock,    reallocateBlock, undefined};
}

}  // namespace host_sim
