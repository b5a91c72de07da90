// parseCube: what a text that parses yields.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/luts.h"

namespace {

const std::string kBody =
    "0 0.25 0.5\n1 2 3\n4 5 6\n7 8 9\n"
    "10 11 12\n13 14 15\n16 17 18\n-19 20.5 1e3\n";

const std::vector<float> kBodyValues = {0,  0.25f, 0.5f, 1,  2,  3,  4,  5,  6,  7,   8,     9,
                                        10, 11,    12,   13, 14, 15, 16, 17, 18, -19, 20.5f, 1000};

// The record that a text made of a size line and kBody gives.
tw::Lut3D bodyLut() {
    tw::Lut3D lut;
    lut.size = 2;
    lut.data = kBodyValues;
    return lut;
}

::testing::AssertionResult parsesTo(const tw::Lut3D& expected, const std::string& text) {
    tw::Lut3D lut;
    std::string error = "untouched";
    if (!tw::parseCube(text, lut, &error))
        return ::testing::AssertionFailure() << "failed with \"" << error << '"';
    if (error != "untouched")
        return ::testing::AssertionFailure() << "success wrote \"" << error << '"';
    return twtest::sameLut(expected, lut);
}

TEST(Lut3D, holdsNoLut_whenDefaultConstructed) {
    const tw::Lut3D lut;
    EXPECT_EQ(0, lut.size);
    EXPECT_EQ(0, lut.id);
    EXPECT_EQ(0, lut.probe);
    EXPECT_EQ("", lut.name);
    EXPECT_TRUE(twtest::sameBits(std::vector<float>{0, 0, 0}, lut.domainMin));
    EXPECT_TRUE(twtest::sameBits(std::vector<float>{1, 1, 1}, lut.domainMax));
    EXPECT_TRUE(lut.data.empty());
}

TEST(Lut3D, findsLatticePoint_redFastest) {
    EXPECT_EQ(0, tw::latticeIndex(5, 0, 0, 0));
    EXPECT_EQ(3, tw::latticeIndex(5, 1, 0, 0));
    EXPECT_EQ(15, tw::latticeIndex(5, 0, 1, 0));
    EXPECT_EQ(75, tw::latticeIndex(5, 0, 0, 1));
    EXPECT_EQ(372, tw::latticeIndex(5, 4, 4, 4));
    EXPECT_EQ(50331645, tw::latticeIndex(256, 255, 255, 255));
    EXPECT_EQ(50331648U, tw::latticeFloats(256));
}

TEST(ParseCube, keepsLineOrder_ofTwoPointCube) {
    EXPECT_TRUE(parsesTo(bodyLut(), "LUT_3D_SIZE 2\n" + kBody));
}

TEST(ParseCube, resetsRecord_beforeReading) {
    tw::Lut3D lut = twtest::scatteredLut(5, 1);
    lut.id = 7;
    lut.probe = 9;
    lut.name = "old";
    twtest::setDomain(lut, 1, -3, 8);
    ASSERT_TRUE(tw::parseCube("LUT_3D_SIZE 2\n" + kBody, lut, nullptr));
    EXPECT_TRUE(twtest::sameLut(bodyLut(), lut));
}

TEST(ParseCube, readsDomain_perChannel) {
    tw::Lut3D expected = bodyLut();
    twtest::setDomain(expected, 0, -1, 2);
    twtest::setDomain(expected, 1, 0.5f, 3);
    twtest::setDomain(expected, 2, -0.25f, 4);
    const std::string domain = "DOMAIN_MIN -1 0.5 -.25\nDOMAIN_MAX 2 3 4\n";
    EXPECT_TRUE(parsesTo(expected, domain + "LUT_3D_SIZE 2\n" + kBody));
}

TEST(ParseCube, reservesOnce_whenSizeComesFirst) {
    tw::Lut3D lut;
    ASSERT_TRUE(tw::parseCube("LUT_3D_SIZE 2\n" + kBody, lut, nullptr));
    EXPECT_EQ(24U, lut.data.capacity());
}

TEST(ParseCube, acceptsSize_of256) {
    tw::Lut3D lut;
    std::string error;
    std::string text = "LUT_3D_SIZE 256\n";
    text.reserve(text.size() + std::size_t{256} * 256 * 256 * 6);
    for (int i = 0; i < 256 * 256 * 256 - 1; ++i)
        text += "0 1 2\n";
    text += "7 8 9";
    ASSERT_TRUE(tw::parseCube(text, lut, &error)) << error;
    EXPECT_EQ(256, lut.size);
    ASSERT_EQ(50331648U, lut.data.size());
    EXPECT_EQ(2.0f, lut.data[50331644]);
    EXPECT_EQ(7.0f, lut.data[50331645]);
    EXPECT_EQ(9.0f, lut.data[50331647]);
}

}  // namespace
