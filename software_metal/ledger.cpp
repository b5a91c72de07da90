#include "software_metal/ledger.h"

#include <mutex>
#include <utility>

namespace software_metal {
namespace {

struct Ledger {
    std::mutex mutex;
    Faults faults;
    Counts counts;
    std::string misuse;
    std::string contraction = "off";
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
}

Faults faults() {
    const std::lock_guard lock(ledger().mutex);
    return ledger().faults;
}

Counts counts() {
    const std::lock_guard lock(ledger().mutex);
    return ledger().counts;
}

std::string takeMisuse() {
    const std::lock_guard lock(ledger().mutex);
    return std::exchange(ledger().misuse, {});
}

void setContraction(const std::string& mode) {
    const std::lock_guard lock(ledger().mutex);
    ledger().contraction = mode;
}

std::string contraction() {
    const std::lock_guard lock(ledger().mutex);
    return ledger().contraction;
}

void count(const std::function<void(Counts&)>& change) {
    const std::lock_guard lock(ledger().mutex);
    change(ledger().counts);
}

void misuse(const std::string& sentence) {
    const std::lock_guard lock(ledger().mutex);
    ledger().misuse += sentence + "\n";
}

}  // namespace software_metal
