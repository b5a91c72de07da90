// Writing a LUT as TWLUT text and reading it back.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/luts.h"
#include "tests/support/samples_kept.h"

namespace {

// Through the text and the 16-bit form in which a parameter stores it.
tw::Lut3D roundTrip(const tw::Lut3D& lut, long id, const std::string& name) {
    const std::vector<std::uint16_t> units = tw::toUtf16(tw::toEmbeddedText(lut, id, name));
    tw::Lut3D back;
    std::string error;
    EXPECT_TRUE(
        tw::parseEmbeddedText(tw::embeddedText(units.data(), units.size() * 2), back, &error))
        << error;
    return back;
}

tw::Lut3D spreadLut(std::int32_t size, float lo, float hi) {
    tw::Lut3D lut = twtest::blankLut(size);
    twtest::Random random(70);
    for (float& value : lut.data)
        value = random.between(lo, hi);
    lut.data[0] = lo;
    lut.data[1] = hi;
    return lut;
}

TEST(TextRoundTrip, keepsSamples_withinHalfACode) {
    const float ranges[][2] = {
        {0, 1},          {-0.5f, 1.5f},   {0.1f, 0.100001f}, {-1e-30f, 1e-30f},
        {-65504, 65504}, {1000, 1000.5f}, {-1e30f, 1e37f}};
    for (const auto& range : ranges) {
        const tw::Lut3D lut = spreadLut(9, range[0], range[1]);
        EXPECT_TRUE(twtest::samplesKept(lut, roundTrip(lut, 1, "n"), range[0], range[1]))
            << range[0] << " to " << range[1];
    }
}

TEST(TextRoundTrip, keepsEveryAllowedSize) {
    for (const std::int32_t size : {2, 3, 17, 33, 65, 129}) {
        const tw::Lut3D lut = spreadLut(size, 0, 1);
        EXPECT_TRUE(twtest::samplesKept(lut, roundTrip(lut, 1, "n"), 0, 1)) << size;
    }
}

TEST(TextRoundTrip, keepsEqualSamples_exactly) {
    const tw::Lut3D half = twtest::constantLut(0.5f);
    EXPECT_TRUE(twtest::sameBits(half.data, roundTrip(half, 0, "").data));
    const tw::Lut3D tenth = twtest::constantLut(-0.1f);
    EXPECT_TRUE(twtest::sameBits(tenth.data, roundTrip(tenth, 0, "").data));
}

TEST(TextRoundTrip, keepsIdentity_ofTwoPoints) {
    const tw::Lut3D identity = twtest::identityLut(2);
    const tw::Lut3D back = roundTrip(identity, 3, "id");
    EXPECT_TRUE(twtest::samplesKept(identity, back, 0, 1));
    EXPECT_EQ(3, back.id);
    EXPECT_EQ("id", back.name);
}

TEST(TextRoundTrip, keepsIds) {
    for (const long id :
         {0L, -1L, 123456789L, std::numeric_limits<long>::max(), std::numeric_limits<long>::min()})
        EXPECT_EQ(id, roundTrip(twtest::constantLut(1), id, "n").id);
}

TEST(TextRoundTrip, keepsNames) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(static_cast<unsigned char>(byte));
    const std::string names[] = {"",
                                 "a",
                                 "a b/c",
                                 "Wild \xE2\x80\x93 West",
                                 "%41",
                                 "--",
                                 " ",
                                 all.substr(0, 128),
                                 "100%",
                                 "-1 2 3 4 5",
                                 all.substr(128),
                                 std::string(399, 'n')};
    for (const std::string& name : names)
        EXPECT_EQ(name, roundTrip(twtest::constantLut(1), 0, name).name);
}

// "-" stands for the empty name, and nothing else is written for a name that is one hyphen.
TEST(TextRoundTrip, emptiesName_thatIsAHyphen) {
    EXPECT_EQ("", roundTrip(twtest::constantLut(1), 0, "-").name);
}

TEST(TextRoundTrip, dropsDomain) {
    tw::Lut3D lut = twtest::scatteredLut(3, 71);
    twtest::setDomain(lut, 0, -1, 2);
    const tw::Lut3D back = roundTrip(lut, 0, "");
    EXPECT_EQ(0.0f, back.domainMin[0]);
    EXPECT_EQ(1.0f, back.domainMax[0]);
}

TEST(TextRoundTrip, fails_whenEncodedNameExceeds399Characters) {
    for (const std::string& name : {std::string(400, 'n'), std::string(134, ' ')}) {
        tw::Lut3D back;
        std::string error;
        EXPECT_FALSE(tw::parseEmbeddedText(tw::toEmbeddedText(twtest::constantLut(1), 0, name),
                                           back, &error));
        EXPECT_EQ("not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)",
                  error);
    }
}

}  // namespace
