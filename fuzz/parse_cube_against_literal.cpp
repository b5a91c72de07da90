// parseCube against a reader that takes every number with strtof: the same numbers to the bit, the
// same message, and after a failure the same size and domain left behind.
#include <cstdint>
#include <string>

#include "fuzz/require.h"
#include "fuzz/sparing.h"
#include "native/src/lut_engine.h"
#include "tests/support/cube_oracle.h"
#include "tests/support/float_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using twfuzz::require;
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (twfuzz::leaveOut(twfuzz::announcedSize(text))) return -1;
    const twtest::ReadCube expected = twtest::CubeOracle::read(text);
    tw::Lut3D lut;
    std::string error;
    const bool ok = tw::parseCube(text, lut, &error);
    require(ok == expected.ok, "the same texts are taken");
    require(error == expected.error, "\"" + error + "\" is \"" + expected.error + "\"");
    require(lut.size == expected.lut.size, "the same size");
    require(twtest::sameBits(expected.lut.domainMin, lut.domainMin), "domainMin");
    require(twtest::sameBits(expected.lut.domainMax, lut.domainMax), "domainMax");
    require(twtest::sameBits(expected.lut.data, lut.data), "data");
    return 0;
}
