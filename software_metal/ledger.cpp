#include "software_metal/ledger.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace software_metal {
namespace {

struct Ledger {
    std::mutex mutex;
    Faults faults;
    int callsLeft = 0;  // until the one that fails, where faults.nth asks for one
    Counts counts;
    long jobs = 0;  // of all queues, not yet through
    std::condition_variable idle;
    std::string misuse;
    bool flushesSubnormals = false;
};

// Never destroyed: a queue's thread may outlive main().
Ledger& ledger() {
    static auto* const books = new Ledger;
    return *books;
}

}  // namespace

void setFaults(const Faults& faults) {
    const std::lock_guard lock(ledger().mutex);
    ledger().faults = faults;
    ledger().callsLeft = faults.nth;
}

Faults faults() {
    const std::lock_guard lock(ledger().mutex);
    return ledger().faults;
}

bool isFaultDue() {
    const std::lock_guard lock(ledger().mutex);
    return ledger().callsLeft > 0;
}

bool takesFault(bool Faults::*which) {
    const std::lock_guard lock(ledger().mutex);
    const Faults& faults = ledger().faults;
    if (!(faults.*which) || faults.nth == 0) return faults.*which;
    return ledger().callsLeft > 0 && --ledger().callsLeft == 0;
}

Counts counts() {
    const std::lock_guard lock(ledger().mutex);
    return ledger().counts;
}

void waitUntilIdle() {
    std::unique_lock lock(ledger().mutex);
    ledger().idle.wait(lock, [] { return ledger().jobs == 0; });
}

std::string takeMisuse() {
    const std::lock_guard lock(ledger().mutex);
    return std::exchange(ledger().misuse, {});
}

void setFlushesSubnormals(bool flushes) {
    const std::lock_guard lock(ledger().mutex);
    ledger().flushesSubnormals = flushes;
}

bool flushesSubnormals() {
    const std::lock_guard lock(ledger().mutex);
    return ledger().flushesSubnormals;
}

void count(const std::function<void(Counts&)>& change) {
    const std::lock_guard lock(ledger().mutex);
    change(ledger().counts);
}

void misuse(const std::string& sentence) {
    const std::lock_guard lock(ledger().mutex);
    ledger().misuse += sentence + "\n";
}

void jobBegins() {
    const std::lock_guard lock(ledger().mutex);
    ++ledger().jobs;
}

void jobEnds() {
    const std::lock_guard lock(ledger().mutex);
    if (--ledger().jobs == 0) ledger().idle.notify_all();
}

}  // namespace software_metal
