// The kernel draws the calibration pattern as the CPU does.
#include <gtest/gtest.h>

#include <string>

#include "tests/gpu/parity.h"

namespace {

using twtest::compare;
using twtest::Differences;
using twtest::Parity;
using twtest::Picture;
using twtest::Shape;

class Pattern : public Parity, public testing::WithParamInterface<int> {
protected:
    void checkPattern(int n, const Shape& shape) {
        SCOPED_TRACE(testing::Message()
                     << shape.width << " x " << shape.height << ", half " << shape.half);
        std::string err;
        const Picture actual = twtest::kernelPattern(device_, n, shape, &err);
        EXPECT_EQ(err, "");
        const Differences found = compare(twtest::cpuPattern(n, shape), actual);
        EXPECT_EQ(found.unequal, 0) << found.first;
        EXPECT_TRUE(actual.paddingIntact());
    }
};

TEST_P(Pattern, isThatOfTheCpu) {
    for (const bool half : {false, true}) {
        checkPattern(GetParam(), {320, 180, 323, half});
        checkPattern(GetParam(), {101, 97, 101, half});
        checkPattern(GetParam(), {1, 40, 3, half});
    }
    // The widest frame: places times columns pass 32 bits.
    checkPattern(GetParam(), {32767, 1, 32767, false});
}

INSTANTIATE_TEST_SUITE_P(Sizes, Pattern, testing::Values(2, 3, 4, 5, 8, 16, 17, 31, 33, 63, 64),
                         testing::PrintToStringParamName());

}  // namespace
