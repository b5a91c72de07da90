#include "host_sim/values/books.h"

#include "host_sim/values/call_scope.h"

namespace host_sim {

void Books::problem(const std::string& sentence) {
    problemAtEnd(sentence + " (" + CallScope::describeCurrent() + ")");
}

void Books::problemAtEnd(const std::string& sentence) {
    const std::lock_guard lock(mutex_);
    problems_.push_back(sentence + ".");
}

void Books::finished(const CallRecord& call) {
    const std::lock_guard lock(mutex_);
    calls_.push_back(call);
}

std::vector<std::string> Books::problems() {
    const std::lock_guard lock(mutex_);
    seen_ = problems_.size();
    return problems_;
}

bool Books::hasUnseenProblems() const {
    const std::lock_guard lock(mutex_);
    return seen_ < problems_.size();
}

std::vector<CallRecord> Books::calls() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

}  // namespace host_sim
