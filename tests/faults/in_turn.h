// Fault injection: fails the first, the second, ... call that an operation makes, until the
// operation passes without a failure, and checks the outcome each time.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace faults {

// One operation on the effect in a simulated host of its own.
class Scenario {
public:
    virtual ~Scenario() = default;

    // The operation. The failing call is one of those it makes.
    virtual void run() = 0;
    // Waits for what the operation has left to other threads. Nothing fails meanwhile.
    virtual void settle() {}
    // The outcome in a few words. Nothing fails meanwhile.
    virtual std::string outcome() = 0;
    // The operation once more, with nothing failing.
    virtual void repeat() { run(); }
    // Closes the host; what its books report fails the test.
    virtual void close() = 0;
};

// Makes one.
using Begin = std::function<std::unique_ptr<Scenario>()>;

// One kind of call.
struct Kind {
    std::string name;
    std::function<void(int nth)> fail;
    std::function<bool()> isDue;
    std::function<void()> letPass;
    bool isPossible = true;  // else it is left out, and what is expected of it too
};

using Outcomes = std::set<std::string>;

// Kinds go by their names.
class Expected {
public:
    // The outcome of the operation without a failure.
    explicit Expected(std::string good) : good_(std::move(good)) {}

    // All outcomes of operations in which one call of the kind failed. Calls of other kinds than
    // those given here and below there must be none.
    Expected& failed(const std::string& kind, const Outcomes& outcomes);
    // Kinds whose failures do not change the outcome.
    Expected& harmless(const std::vector<std::string>& kinds);
    // Outcomes of the operation after that with a failing call, where they are not the good one
    // alone.
    Expected& repeated(const std::string& kind, const Outcomes& outcomes);
    // Kinds after which the process keeps another amount of memory to its end.
    Expected& keepsOther(const std::vector<std::string>& kinds);

private:
    friend class InTurn;

    std::string good_;
    std::map<std::string, Outcomes> failed_;
    std::map<std::string, Outcomes> repeated_;
    std::set<std::string> keepOther_;
};

// For each kind and each number of a call one process runs the scenario, made by `begin`: the
// operation with that call failing, its outcome, the operation again, its outcome, the end. Fails
// the test unless all outcomes and the kinds that there are calls of are those expected, and when
// memory or a file is left, the process ends badly or hangs, or calls fail without end. Prints how
// often each kind failed.
void failInTurn(const std::vector<Kind>& kinds, const Begin& begin, const Expected& expected);

template <class SomeScenario, class... Arguments>
Begin scenario(Arguments... arguments) {
    return [=] { return std::make_unique<SomeScenario>(arguments...); };
}

}  // namespace faults
