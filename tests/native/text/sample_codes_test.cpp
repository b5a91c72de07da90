// The samples of a text that lies among other bytes.
#include "native/src/text/sample_codes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// 24 codes of zero in 64 characters.
std::vector<float> decoded(const std::string& bytes, std::size_t length, std::size_t stride,
                           bool& whole) {
    std::vector<float> values(24, -1.0f);
    const auto* first = reinterpret_cast<const unsigned char*>(bytes.data());
    whole = tw::decodeSamples({first, length, stride}, 0.0f, 1.0f, values);
    return values;
}

TEST(SampleCodes, areNotReadPastTheEnd) {
    for (const std::size_t stride : {1u, 2u}) {
        std::string bytes;
        for (int i = 0; i < 80; ++i)
            bytes += stride == 1 ? std::string("A") : std::string("A\0", 2);
        bool whole = false;
        EXPECT_EQ(decoded(bytes, 64, stride, whole), std::vector<float>(24, 0.0f));
        EXPECT_TRUE(whole);
        const std::vector<float> cut = decoded(bytes, 63, stride, whole);
        EXPECT_FALSE(whole);
        EXPECT_EQ(cut[22], 0.0f);
        EXPECT_EQ(cut[23], -1.0f);
    }
}

}  // namespace
