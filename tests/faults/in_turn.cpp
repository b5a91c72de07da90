#include "tests/faults/in_turn.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <utility>

#include "tests/support/child.h"
#include "tests/support/failing_calls.h"

namespace faults {
namespace {

// More calls of one kind than any operation makes.
constexpr int kMostCalls = 1000;

// What a child process reports.
struct Report {
    char failed[400] = {};  // kinds of which a call failed, a blank before each
    char outcome[400] = {};
    char repeated[400] = {};
    long blocks = 0;
};

template <std::size_t size>
void write(char (&field)[size], const std::string& text) {
    ASSERT_LT(text.size(), size) << text;
    std::memcpy(field, text.c_str(), text.size() + 1);
}

// Kinds of which a call has failed. Lets all pass again.
std::string endFailures(const std::vector<Kind>& kinds) {
    std::string names;
    for (const Kind& kind : kinds)
        names += kind.isDue() ? "" : " " + kind.name;
    for (const Kind& kind : kinds)
        kind.letPass();
    return names;
}

// Runs the scenario with the nth call of each of these kinds failing, and again without.
void run(Scenario& scenario, const std::vector<Kind>& kinds, int nth, Report& report) {
    {
        for (const Kind& kind : kinds)
            kind.fail(nth);
        const twtest::Watch watch;
        scenario.run();
        write(report.failed, endFailures(kinds));
        scenario.settle();
    }
    EXPECT_EQ(twtest::watchedFiles(), 0);
    write(report.outcome, scenario.outcome());
    {
        const twtest::Watch watch;
        scenario.repeat();
        scenario.settle();
    }
    EXPECT_EQ(twtest::watchedFiles(), 0);
    write(report.repeated, scenario.outcome());
    scenario.close();
}

}  // namespace

Expected& Expected::failed(const std::string& kind, const Outcomes& outcomes) {
    failed_[kind] = outcomes;
    return *this;
}

Expected& Expected::harmless(const std::vector<std::string>& kinds) {
    for (const std::string& kind : kinds)
        failed_[kind] = {good_};
    return *this;
}

Expected& Expected::repeated(const std::string& kind, const Outcomes& outcomes) {
    repeated_[kind] = outcomes;
    return *this;
}

Expected& Expected::keepsOther(const std::vector<std::string>& kinds) {
    keepOther_.insert(kinds.begin(), kinds.end());
    return *this;
}

class InTurn {
public:
    InTurn(const std::vector<Kind>& kinds, const Begin& begin, const Expected& expected)
        : begin_(begin), expected_(expected) {
        for (const Kind& kind : kinds) {
            if (kind.isPossible) {
                const bool fails = expected_.failed_.contains(kind.name);
                (fails ? failing_ : others_).push_back(kind);
            } else if (expected_.failed_.erase(kind.name) != 0) {
                expected_.repeated_.erase(kind.name);
                std::printf("%s is left out: it cannot be made to fail here\n", kind.name.c_str());
            }
        }
    }

    // Runs it without failures, and expects no calls of unlisted kinds. Its memory in use
    // afterwards is the measure for the runs with failures.
    bool passesUntouched() {
        twtest::Shared<Report> report;
        if (!inChild(others_, 1, *report)) return false;
        EXPECT_STREQ(report->failed, "");
        blocks_ = report->blocks;
        return expectGood(*report);
    }

    void failAll() {
        for (const Kind& kind : failing_) {
            int nth = 1;
            while (nth <= kMostCalls && failOne(kind, nth))
                ++nth;
            EXPECT_LE(nth, kMostCalls);
            std::printf("  %s: %d\n", kind.name.c_str(), nth - 1);
        }
    }

    void expectOutcomes() const {
        std::map<std::string, Outcomes> repeated = repeated_;
        std::erase_if(repeated, [&](const auto& of) { return of.second == Outcomes{good()}; });
        EXPECT_EQ(failed_, expected_.failed_);
        EXPECT_EQ(repeated, expected_.repeated_);
    }

private:
    const std::string& good() const { return expected_.good_; }

    bool inChild(const std::vector<Kind>& kinds, int nth, Report& report) const {
        return twtest::runInChild([&] {
            {
                const std::unique_ptr<Scenario> scenario = begin_();
                run(*scenario, kinds, nth, report);
            }
            report.blocks = twtest::watchedBlocks();
        });
    }

    // Whether there was such a call, and the process came to its end.
    bool failOne(const Kind& kind, int nth) {
        SCOPED_TRACE(kind.name + " " + std::to_string(nth));
        twtest::Shared<Report> report;
        if (!inChild({kind}, nth, *report)) return false;
        if (report->failed[0] == '\0') {
            expectGood(*report);
            return false;
        }
        failed_[kind.name].insert(report->outcome);
        repeated_[kind.name].insert(report->repeated);
        if (!expected_.keepOther_.contains(kind.name)) {
            EXPECT_EQ(report->blocks, blocks_) << report->outcome;
        }
        return true;
    }

    bool expectGood(const Report& report) const {
        EXPECT_EQ(report.outcome, good());
        EXPECT_EQ(report.repeated, good());
        return report.outcome == good() && report.repeated == good();
    }

    const Begin& begin_;
    Expected expected_;
    std::vector<Kind> failing_;
    std::vector<Kind> others_;
    long blocks_ = 0;
    std::map<std::string, Outcomes> failed_;
    std::map<std::string, Outcomes> repeated_;
};

void failInTurn(const std::vector<Kind>& kinds, const Begin& begin, const Expected& expected) {
    InTurn turns(kinds, begin, expected);
    if (!turns.passesUntouched()) return;
    std::puts("failed in turn:");
    turns.failAll();
    turns.expectOutcomes();
}

}  // namespace faults
