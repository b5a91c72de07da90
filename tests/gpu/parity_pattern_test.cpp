// The kernel draws the calibration pattern as the CPU does.
#include <gtest/gtest.h>

#include <vector>

#include "tests/gpu/parity.h"

namespace {

using twtest::compare;
using twtest::Differences;
using twtest::Handle;
using twtest::Parity;
using twtest::Picture;
using twtest::Shape;

class Pattern : public Parity, public testing::WithParamInterface<int> {
protected:
    void checkPattern(int n, const Shape& shape) {
        SCOPED_TRACE(testing::Message()
                     << shape.width << " x " << shape.height << ", half " << shape.half);
        Picture expected(shape);
        std::vector<float> pixels(static_cast<std::size_t>(shape.width) *
                                  static_cast<std::size_t>(shape.height) * 4);
        tw::fillProbeF(
            n, {pixels.data(), shape.width, shape.height, shape.width * 16, tw::kOrderBGRA});
        for (int y = 0; y < shape.height; ++y) {
            for (int i = 0; i < shape.width * 4; ++i)
                expected.set(i / 4, y, i % 4,
                             pixels[static_cast<std::size_t>(y * shape.width * 4 + i)]);
        }
        const Picture actual = kernelPattern(n, shape);
        const Differences found = compare(expected, actual);
        EXPECT_EQ(found.unequal, 0) << found.first;
        EXPECT_TRUE(actual.paddingIntact());
    }

    Picture kernelPattern(int n, const Shape& shape) {
        const tw::Lut3D identity = twtest::identityLut(2);
        twgpu::LutKernelArgs args = twtest::argumentsFor(identity, 0.0f, shape, shape);
        args.probe = n;
        tw::probeGrid(n, shape.width, shape.height, &args.probeCols, &args.probeRows);
        const Handle samples = device_.buffer(identity.data.data(), 96);
        const Handle picture = twtest::upload(device_, Picture(shape));
        EXPECT_TRUE(twmetal::Launch(device_.queue.get(), device_.pipeline.get(), picture.get(),
                                    picture.get(), samples.get(), args, true, nullptr, nullptr));
        return twtest::download(picture, shape);
    }
};

TEST_P(Pattern, isThatOfTheCpu) {
    for (const bool half : {false, true}) {
        checkPattern(GetParam(), {320, 180, 323, half});
        checkPattern(GetParam(), {101, 97, 101, half});
        checkPattern(GetParam(), {1, 40, 3, half});
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Pattern, testing::Values(2, 3, 4, 5, 8, 16, 17, 31, 33, 63, 64),
                         testing::PrintToStringParamName());

}  // namespace
