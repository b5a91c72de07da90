// Every row kernel that this machine can run against the scalar one, bit for bit: floats, streamed
// floats and bytes of any width, order and address, in place or not, through any valid LUT.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/lut_input.h"
#include "fuzz/require.h"
#include "native/src/rows/row_kernels.h"
#include "tests/native/rows/row_kernels_inputs.h"
#include "tests/support/float_check.h"

namespace {

using twfuzz::Input;
using twfuzz::require;
using twfuzz::spread;

struct Case {
    explicit Case(Input& input)
        : lut(twfuzz::takeLut(input)),
          amount(input.number<float>()),
          from(tw::channelMap(static_cast<std::int32_t>(input.below(3)))),
          to(tw::channelMap(static_cast<std::int32_t>(input.below(3)))),
          width(static_cast<int>(input.below(140))),
          shift(input.below(20)),
          inPlace(input.flag()) {}

    std::size_t channels() const { return static_cast<std::size_t>(width) * 4; }

    tw::Lut3D lut;
    float amount;
    tw::ChannelMap from;
    tw::ChannelMap to;
    int width;
    std::size_t shift;  // channels before the row
    bool inPlace;
};

// The row in a buffer of exactly its size, `shift` channels after the start.
template <typename Channel, typename Row>
std::vector<Channel> graded(const Case& c, Row* row, const std::vector<Channel>& source) {
    std::vector<Channel> memory;
    memory.reserve(c.shift + source.size());
    memory.assign(c.shift, Channel{7});
    memory.insert(memory.end(), source.begin(), source.end());
    const std::vector<Channel> apart = memory;
    const Channel* from = c.inPlace ? memory.data() : apart.data();
    row(c.lut, from + c.shift, c.from, memory.data() + c.shift, c.to, c.width, c.amount);
    for (std::size_t i = 0; i < c.shift; ++i)
        require(memory[i] == Channel{7}, "nothing before the row is written");
    return {memory.begin() + static_cast<std::ptrdiff_t>(c.shift), memory.end()};
}

void requireSameFloats(const Case& c, const std::string& name, const std::vector<float>& expected,
                       const std::vector<float>& found) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const bool alpha = i % 4 == static_cast<std::size_t>(c.to.a);
        const bool same = alpha ? twtest::bitsOf(expected[i]) == twtest::bitsOf(found[i])
                                : tw::test::sameResult(expected[i], found[i]);
        if (!same) {
            require(false, name + ", element " + std::to_string(i) + ": " +
                               twtest::shown(found[i]) + " is " + twtest::shown(expected[i]));
        }
    }
}

void checkFloats(const Case& c, const std::vector<float>& source) {
    const std::vector<float> expected = graded(c, tw::kScalarRows.rowF, source);
    for (const tw::RowKernels& kernel : tw::runnableRowKernels()) {
        const std::string name = kernel.name;
        requireSameFloats(c, name, expected, graded(c, kernel.rowF, source));
        requireSameFloats(c, name + " streamed", expected, graded(c, kernel.streamF, source));
    }
}

void checkBytes(const Case& c, const std::vector<std::uint8_t>& source) {
    const std::vector<std::uint8_t> expected = graded(c, tw::kScalarRows.row8, source);
    for (const tw::RowKernels& kernel : tw::runnableRowKernels())
        require(graded(c, kernel.row8, source) == expected, std::string(kernel.name) + ", bytes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const Case c(input);
    checkFloats(c, spread<float>(input, 128, c.channels()));
    checkBytes(c, spread<std::uint8_t>(input, 128, c.channels()));
    return 0;
}
