// parseCube on any bytes: what its header promises of the record and the message, whatever the
// record held before; and a record that it accepts can be sampled and stored.
#include <algorithm>
#include <cstdint>
#include <string>

#include "fuzz/require.h"
#include "fuzz/sparing.h"
#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/support/cube_messages.h"
#include "tests/support/luts.h"

namespace {

using twfuzz::require;

constexpr std::int32_t kMostInText = 129;

void requireValid(const tw::Lut3D& lut) {
    require(lut.size >= 2 && lut.size <= 256, "size within 2..256");
    require(lut.data.size() == tw::latticeFloats(lut.size), "a triple for each point");
    for (int k = 0; k < 3; ++k)
        require(lut.domainMax[k] > lut.domainMin[k], "a domain that rises");
}

// The corners of the domain and its middle are sampled, and the text that would be stored is read.
void use(const tw::Lut3D& lut) {
    for (const float place : {0.0f, 0.5f, 1.0f}) {
        float colour[3];
        for (int k = 0; k < 3; ++k)
            colour[k] = lut.domainMin[k] + (lut.domainMax[k] - lut.domainMin[k]) * place;
        tw::sampleTetra(lut, colour, colour);
    }
    if (lut.size > kMostInText) return;
    tw::Lut3D stored;
    require(tw::parseEmbeddedText(tw::toEmbeddedText(lut, 1, ""), stored, nullptr),
            "the stored text is read");
    require(stored.size == lut.size, "the stored size");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (twfuzz::leaveOut(twfuzz::announcedSize(text))) return -1;
    tw::Lut3D lut;
    std::string error;
    const bool ok = tw::parseCube(text, lut, &error);
    require(lut.id == 0 && lut.probe == 0 && lut.name.empty(), "what no file holds is default");
    if (ok) {
        require(error.empty(), "no message with success");
        requireValid(lut);
        use(lut);
    } else {
        require(std::ranges::count(twtest::kCubeMessages, error) == 1,
                "a message of the list, not \"" + error + "\"");
        require(lut.data.empty(), "no data after a failure");
        const bool sizeRefused = lut.size != 0 && (lut.size < 2 || lut.size > 256);
        require(!sizeRefused || error == twtest::kRange, "a size out of range is named");
    }
    tw::Lut3D used = twtest::scatteredLut(3, 1);
    used.id = 5;
    used.name = "before";
    twtest::setDomain(used, 1, -2.0f, 2.0f);
    require(tw::parseCube(text, used, nullptr) == ok, "the same without a message");
    require(twtest::sameLut(lut, used), "a used record is overwritten");
    return 0;
}
