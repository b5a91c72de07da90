// Has one call after the other fail that an act of the effect leads to, until the act passes
// untouched, and looks at what each failure leaves.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace faults {

// One act on an effect in a simulated host of its own.
class Play {
public:
    virtual ~Play() = default;

    // What is tried. The failing call is one of those it leads to.
    virtual void act() = 0;
    // Until threads of others have done what the act has left to them. Nothing fails meanwhile.
    virtual void settle() {}
    // What the act has led to, in a few words. Nothing fails meanwhile.
    virtual std::string outcome() = 0;
    // The act once more, with nothing failing.
    virtual void repeat() { act(); }
    // The end: the host closes, and what its books say fails the test.
    virtual void close() = 0;
};

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
    // The outcome of the untouched act.
    explicit Expected(std::string good) : good_(std::move(good)) {}

    // All outcomes of acts in which one call of the kind failed. Calls of other kinds than those
    // given here and below there must be none.
    Expected& failed(const std::string& kind, const Outcomes& outcomes);
    // Kinds whose failures do not change the outcome.
    Expected& harmless(const std::vector<std::string>& kinds);
    // Outcomes of the act after that with a failing call, where they are not the good one alone.
    Expected& repeated(const std::string& kind, const Outcomes& outcomes);
    // Kinds after which the process holds another amount of memory than it would otherwise, as what
    // it keeps to its end is another.
    Expected& keepsOther(const std::vector<std::string>& kinds);

private:
    friend class InTurn;

    std::string good_;
    std::map<std::string, Outcomes> failed_;
    std::map<std::string, Outcomes> repeated_;
    std::set<std::string> keepOther_;
};

// For each kind and each number of a call one process runs the play, made by `begin`: the act with
// that call failing, its outcome, the act again, its outcome, the end. Fails the test unless all
// outcomes and the kinds that there are calls of are those expected, and when memory or a file is
// left, the process ends badly or hangs, or calls fail without end. Prints how often each kind
// failed.
void failInTurn(const std::vector<Kind>& kinds, const std::function<std::unique_ptr<Play>()>& begin,
                const Expected& expected);

template <class SomePlay, class... Arguments>
std::function<std::unique_ptr<Play>()> playing(Arguments... arguments) {
    return [=] { return std::make_unique<SomePlay>(arguments...); };
}

}  // namespace faults
