// embeddedText and toUtf16.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/luts.h"
#include "tests/support/row_name.h"

namespace {

// A copy that ends where the bytes end, so that reading on is noticed by the sanitizer.
std::string extracted(const std::string& bytes) {
    const auto exact = std::make_unique<char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), exact.get());
    return tw::embeddedText(exact.get(), bytes.size());
}

std::string wide(const std::string& text) {
    std::string bytes;
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

struct Row {
    const char* name;
    std::string bytes;
    std::string text;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class EmbeddedTextRow : public ::testing::TestWithParam<Row> {};

TEST_P(EmbeddedTextRow, isExtracted_from) {
    const std::string text = extracted(GetParam().bytes);
    EXPECT_EQ(GetParam().text, text)
        << ::testing::PrintToString(GetParam().bytes) << " gave " << ::testing::PrintToString(text);
}

INSTANTIATE_TEST_SUITE_P(
    , EmbeddedTextRow,
    ::testing::Values(
        Row{"NoBytes", "", ""}, Row{"FiveBytes", "TWLUT", ""}, Row{"EightBit", "TWLUT0", "TWLUT0"},
        Row{"EightBitAnyVariant", "TWLUT!", "TWLUT!"},
        Row{"EightBitKeepsTrailingNul", std::string("TWLUT0\0", 7), std::string("TWLUT0\0", 7)},
        Row{"EightBitKeepsAllBytes", std::string("TWLUT1\0\xFF\n", 9),
            std::string("TWLUT1\0\xFF\n", 9)},
        Row{"EightBitOtherCase", "twlut0", ""}, Row{"EightBitLate", " TWLUT0", ""},
        Row{"EightBitOther", "TWLUX0", ""}, Row{"Wide", wide("TWLUT0"), "TWLUT0"},
        Row{"WideLong", wide("TWLUT3 1 n 2 0 1 AAAA"), "TWLUT3 1 n 2 0 1 AAAA"},
        Row{"WideTenBytes", wide("TWLUT"), "TWLUT"},
        Row{"WideElevenBytes", wide("TWLUT") + "0", "TWLUT"},
        Row{"WideNineBytes", wide("TWLUT").substr(0, 9), ""},
        Row{"WideEightBytes", wide("TWLU"), ""}, Row{"WideOtherCase", wide("twlut0"), ""},
        Row{"WideKeepsUnitsBelow256", wide("TWLUT0\xE9\xFF"), "TWLUT0\xE9\xFF"},
        Row{"WideKeepsNulUnit", wide(std::string("TWLUT0\0", 7)), std::string("TWLUT0\0", 7)},
        Row{"WideUnitAbove255Last", wide("TWLUT0") + std::string("\0\x01", 2), ""},
        Row{"WideUnitAbove255First", wide("TWLUT0").replace(11, 1, "\x01"), ""},
        Row{"WideUnitAbove255BeforeOthers", wide("TWLUT0 1").replace(13, 1, "\x01"), ""},
        Row{"WideUnitAbove255InLetters", wide("TWLUT0").replace(1, 1, "\x01"), ""},
        Row{"WideOddLastByteNotLookedAt", wide("TWLUT0") + "\xFF", "TWLUT0"},
        Row{"BigEndian", std::string(1, '\0') + wide("TWLUT0").substr(0, 11), ""},
        Row{"LittleEndianBom", "\xFF\xFE" + wide("TWLUT0"), ""},
        Row{"Utf8Bom", "\xEF\xBB\xBFTWLUT0", ""}, Row{"Zeros", std::string(12, '\0'), ""}),
    twtest::RowName());

TEST(EmbeddedText, isEmpty_withoutPointer) {
    EXPECT_EQ("", tw::embeddedText(nullptr, 0));
    EXPECT_EQ("", tw::embeddedText(nullptr, 12));
}

TEST(ToUtf16, givesOneUnitPerByte) {
    EXPECT_EQ(std::vector<std::uint16_t>(), tw::toUtf16(""));
    EXPECT_EQ((std::vector<std::uint16_t>{'T', 'W', 'L', 'U', 'T', '0'}), tw::toUtf16("TWLUT0"));
    std::string all;
    std::vector<std::uint16_t> units;
    for (unsigned byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(static_cast<unsigned char>(byte));
        units.push_back(static_cast<std::uint16_t>(byte));
    }
    EXPECT_EQ(units, tw::toUtf16(all));
}

TEST(ToUtf16, isUndone_byEmbeddedText) {
    const std::string text = "TWLUT3 1 gr%C3%BCn 2 0 1 \xE9" + std::string(1, '\0');
    const std::vector<std::uint16_t> units = tw::toUtf16(text);
    EXPECT_EQ(text, tw::embeddedText(units.data(), units.size() * 2));
}

TEST(EmbeddedText, givesSameRecord_fromBothWidths) {
    const std::string text =
        "TWLUT3 9 n 2 0 1 " + twtest::encodeCodes(twtest::scatteredCodes(24)) + "\n";
    tw::Lut3D narrow;
    tw::Lut3D broad;
    ASSERT_TRUE(tw::parseEmbeddedText(extracted(text), narrow, nullptr));
    ASSERT_TRUE(tw::parseEmbeddedText(extracted(wide(text)), broad, nullptr));
    EXPECT_EQ(9, narrow.id);
    EXPECT_TRUE(twtest::sameLut(narrow, broad));
}

}  // namespace
