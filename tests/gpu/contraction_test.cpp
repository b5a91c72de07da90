// The software device fuses as Apple's does, so that the kernel's pragmas can be seen to work.
#include <gtest/gtest.h>

#include <map>

#include "tests/gpu/contraction_probe.h"

namespace {

TEST(Contraction, isOnWithinAnExpression_andEitherPragmaTurnsItOff) {
#if defined(__x86_64__)
    if (!__builtin_cpu_supports("fma")) GTEST_SKIP() << "this processor fuses nothing";
#endif
    std::map<std::string, bool> fused;
    for (const twtest::ContractionProbe& probe : twtest::probeContraction()) {
        EXPECT_TRUE(probe.ran) << probe.name << ": " << probe.error;
        fused[probe.name] = probe.fused;
    }
    const std::map<std::string, bool> expected = {
        {"one expression", true},
        {"two statements", false},
        {"METAL pragma", false},
        {"STDC pragma", false},
        {"fma", true},
        {"fma under both pragmas", true},
    };
    EXPECT_EQ(fused, expected);
}

}  // namespace
