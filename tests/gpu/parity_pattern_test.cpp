// The kernel draws the calibration pattern as the CPU does.
#include <gtest/gtest.h>

#include <string>

#include "tests/gpu/parity_fixture.h"

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
    for (const Shape& shape : twtest::patternShapes())
        checkPattern(GetParam(), shape);
}

INSTANTIATE_TEST_SUITE_P(Sizes, Pattern, testing::ValuesIn(twtest::patternSizes()),
                         testing::PrintToStringParamName());

}  // namespace
