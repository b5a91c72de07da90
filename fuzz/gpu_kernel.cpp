// The kernel on the software device against the CPU's picture: any valid LUT, colours and amount,
// in 32-bit and half floats, in place and from one buffer to another; or the calibration pattern.
#include <cstdint>
#include <string>

#include "fuzz/lut_input.h"
#include "fuzz/require.h"
#include "software_metal/control.h"
#include "tests/gpu/differences.h"
#include "tests/gpu/parity.h"

namespace {

using twfuzz::Input;
using twfuzz::require;
using twtest::Picture;
using twtest::Shape;

// The kernel is compiled once.
const twtest::Device& device() {
    static const twtest::Device made;
    require(made.pipeline.get() != nullptr, "a device with the kernel");
    return made;
}

void requireSame(const Picture& expected, const Picture& actual) {
    const twtest::Differences found = twtest::compare(expected, actual);
    require(found.unequal == 0, "the same bits: " + found.first);
    require(actual.paddingIntact(), "padding");
}

Shape takeShape(Input& input) {
    Shape shape;
    shape.width = static_cast<int>(1 + input.below(20));
    shape.height = static_cast<int>(1 + input.below(20));
    shape.pitch = shape.width + static_cast<int>(input.below(5));
    shape.half = input.flag();
    return shape;
}

void checkPattern(Input& input) {
    const Shape shape = takeShape(input);
    const int n = static_cast<int>(2 + input.below(63));
    std::string err;
    const Picture actual = twtest::kernelPattern(device(), n, shape, &err);
    require(err.empty(), err);
    requireSame(twtest::cpuPattern(n, shape), actual);
}

void checkGrading(Input& input) {
    Shape shape = takeShape(input);
    Picture source(shape);
    const bool inPlace = input.flag();
    if (!inPlace) shape.pitch = shape.width + static_cast<int>(input.below(5));
    const tw::Lut3D lut = twfuzz::takeLut(input);
    const auto amount = input.number<float>();
    const auto channels =
        static_cast<std::size_t>(shape.width) * static_cast<std::size_t>(shape.height) * 4;
    const std::vector<float> values = twfuzz::spread<float>(input, 128, channels);
    for (std::size_t i = 0; i < channels; ++i) {
        const int pixel = static_cast<int>(i / 4);
        source.set(pixel % shape.width, pixel / shape.width, static_cast<int>(i % 4), values[i]);
    }
    std::string err;
    const Picture actual = twtest::kernelPicture(
        device(), lut, source, amount,
        inPlace ? twtest::Place::kInPlace : twtest::Place::kOtherBuffer, shape, &err);
    require(err.empty(), err);
    requireSame(twtest::cpuPicture(lut, source, amount, shape), actual);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    if (input.below(8) == 7)
        checkPattern(input);
    else
        checkGrading(input);
    const std::string misuse = software_metal::takeMisuse();
    require(misuse.empty(), misuse);
    return 0;
}
