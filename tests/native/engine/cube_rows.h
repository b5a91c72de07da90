// Tables of .cube texts: a name, the text, and what the parser makes of it.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/luts.h"
#include "tests/support/row_name.h"

namespace twtest {

// What is left in the record: of a text that is refused the size and the domain.
struct CubeOutcome {
    const char* message = nullptr;  // null: taken
    tw::Lut3D lut;
};

inline CubeOutcome refused(const char* message, int size = 2) {
    CubeOutcome outcome{message, {}};
    outcome.lut.size = size;
    return outcome;
}

inline CubeOutcome withDomain(CubeOutcome outcome, const std::vector<float>& low,
                              const std::vector<float>& high) {
    for (std::size_t c = 0; c < 3; ++c)
        setDomain(outcome.lut, static_cast<int>(c), low[c], high[c]);
    return outcome;
}

struct CubeRow {
    const char* name;
    std::string text;
    CubeOutcome outcome;
};

inline void PrintTo(const CubeRow& row, std::ostream* out) {
    *out << row.name;
}

// One test, in cube_parser_failures_test.cpp; the rows are there and in cube_quirks_test.cpp.
class CubeText : public ::testing::TestWithParam<CubeRow> {};

}  // namespace twtest
