// The module under test: the one that it was built with, or, for the macOS
// bundle's code, the one that the environment variable TINTWELL_TEST_MODULE names.
#pragma once

#include <cstdlib>
#include <string>

namespace twtest {

inline std::string testedModule() {
    const char* other = std::getenv("TINTWELL_TEST_MODULE");
    return other ? other : TINTWELL_MODULE;
}

}  // namespace twtest
