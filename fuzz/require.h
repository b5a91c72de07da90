// Ends the process when something does not hold; the fuzzer then keeps the input.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace twfuzz {

inline void require(bool holds, const std::string& what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what.c_str());
    std::abort();
}

inline void require(const ::testing::AssertionResult& result, const std::string& what) {
    require(static_cast<bool>(result), what + ": " + result.message());
}

}  // namespace twfuzz
