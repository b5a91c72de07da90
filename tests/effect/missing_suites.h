// The ways in which a host lacks a suite.
#pragma once

#include <ostream>
#include <string>

#include "host_sim/values/refusals.h"

namespace twtest {

struct MissingSuite {
    const char* name;
    host_sim::SuiteAnswer answer;
    bool isAsked;  // false: there is no basic suite to ask for it

    void arrange(host_sim::Refusals& refusals, const std::string& suite) const {
        refusals.answerSuite(suite, answer);
        refusals.withoutBasicSuite(!isAsked);
    }
};

inline constexpr MissingSuite kMissingSuites[] = {
    {"NotFound", host_sim::SuiteAnswer::kNotFound, true},
    {"NullTable", host_sim::SuiteAnswer::kNullTable, true},
    {"ErrorWithTable", host_sim::SuiteAnswer::kErrorWithTable, true},
    {"NoSuitesAtAll", host_sim::SuiteAnswer::kTable, false}};

inline void PrintTo(const MissingSuite& missing, std::ostream* out) {
    *out << missing.name;
}

}  // namespace twtest
