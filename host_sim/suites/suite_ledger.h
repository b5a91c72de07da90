// Suites that the host offers, and who acquired and released them.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>

#include "host_api/basic_suite.h"
#include "host_sim/values/books.h"
#include "host_sim/values/refusals.h"

namespace host_sim {

struct SuiteUse {
    int acquired = 0;  // successes
    int refused = 0;   // not offered, hidden, answered with a null table or with an error
    int released = 0;
};

// Threads: every function from any thread. Lock order: before that of the books.
class SuiteLedger {
public:
    SuiteLedger(Books& books, Refusals& refusals);

    // `table` must outlive the ledger.
    void offer(const std::string& name, std::int32_t version, const void* table);
    // The same for a suite that effects may keep to the end: no leftover then.
    void offerToKeep(const std::string& name, std::int32_t version, const void* table);

    SPErr acquire(const char* name, std::int32_t version, const void** suite);
    SPErr release(const char* name, std::int32_t version);

    SuiteUse use(const std::string& name, std::int32_t version) const;
    // Writes a problem for each suite that was not released as often as acquired.
    void reportLeftovers();

private:
    using Key = std::pair<std::string, std::int32_t>;

    Books& books_;
    Refusals& refusals_;
    mutable std::mutex mutex_;
    std::map<Key, const void*> offered_;
    std::set<Key> mayStay_;
    std::map<Key, SuiteUse> uses_;
};

}  // namespace host_sim
