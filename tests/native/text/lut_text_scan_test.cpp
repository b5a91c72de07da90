// parseEmbeddedText: the tolerance of the header, the names and the data.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/locales.h"
#include "tests/support/luts.h"
#include "tests/support/text_oracle.h"

namespace {

const std::string kData = twtest::encodeCodes(twtest::scatteredCodes(24));

// Reads the text both ways and compares result, message and record.
::testing::AssertionResult readsLikeOracle(const std::string& text) {
    const twtest::ReadText expected = twtest::readTextSlowly(text);
    tw::Lut3D lut;
    std::string error;
    const bool ok = tw::parseEmbeddedText(text, lut, &error);
    if (ok != expected.ok || error != expected.error) {
        return ::testing::AssertionFailure()
               << "expected " << expected.ok << " \"" << expected.error << "\", got " << ok << " \""
               << error << "\" for " << ::testing::PrintToString(text);
    }
    return twtest::sameLut(expected.lut, lut) << " for " << ::testing::PrintToString(text);
}

tw::Lut3D read(const std::string& text) {
    tw::Lut3D lut;
    std::string error;
    EXPECT_TRUE(tw::parseEmbeddedText(text, lut, &error))
        << error << " for " << ::testing::PrintToString(text);
    return lut;
}

std::string nameOf(const std::string& encoded) {
    return read("TWLUT3 1 " + encoded + " 2 0 1 " + kData).name;
}

TEST(TextHeader, mayLackBlanks_orHoldMore) {
    const tw::Lut3D plain = read("TWLUT3 42 n 2 -1 +1 " + kData);
    for (const std::string head :
         {"TWLUT342 n 2 -1 +1 ", "TWLUT3 42 n 2-1+1 ", "TWLUT3\t42\nn\r2\v-1\f1 ",
          "TWLUT3   +42  n  +2  -1.0e0  0x1p0   ", "TWLUT3 042 n 02 -0x.8p1 10e-1\n",
          "TWLUT3 42 n 2 -1 1.\t"})
        EXPECT_TRUE(twtest::sameLut(plain, read(head + kData))) << head;
    const tw::Lut3D form2 = read("TWLUT2 42 2 -1 1 " + kData);
    EXPECT_TRUE(twtest::sameLut(form2, read("TWLUT2+42+2-1+1 " + kData)));
    const tw::Lut3D form1 = read("TWLUT1 2 -1 1 " + kData);
    EXPECT_TRUE(twtest::sameLut(form1, read("TWLUT12-1+1\t" + kData)));
    EXPECT_EQ(4, read("TWLUTP4").probe);
    EXPECT_EQ(4, read("TWLUTP\n\t+004x").probe);
    EXPECT_EQ(4, read("TWLUTP 4.9").probe);
}

TEST(TextHeader, runsIntoData_withoutBlankBetween) {
    EXPECT_TRUE(readsLikeOracle("TWLUT1 2 0 1" + std::string("QUJD") + kData));
    EXPECT_TRUE(readsLikeOracle("TWLUT1 2 0 1" + std::string("EUJD") + kData));
    EXPECT_TRUE(readsLikeOracle("TWLUT1 2 0 1" + std::string("E2JD") + kData));
    EXPECT_TRUE(readsLikeOracle("TWLUT1 2 0 1" + std::string("+UJD") + kData));
    EXPECT_TRUE(readsLikeOracle("TWLUT1 2 0 1" + std::string("/UJD") + kData));
}

TEST(TextHeader, readsWords_asRange) {
    for (const std::string range : {"0 inf", "-inf inf", "nan 1", "0 NAN", "infinity 0", "0 infi",
                                    "0 nan(1)", "1e39 -1e39", "1e-60 1", "0x1p-149 0x1p127"})
        EXPECT_TRUE(readsLikeOracle("TWLUT1 2 " + range + " " + kData)) << range;
}

// The short copy of 96 characters ends inside hi: what is left of hi counts, and the rest of its
// digits become data.
TEST(TextHeader, cutsHighInItsDigits_atCharacter96) {
    const std::string name(72, 'n');
    const std::string text = "TWLUT3 42 " + name + " 2 -0.5 0.123456789 " + kData;
    ASSERT_EQ("TWLUT3 42 " + name + " 2 -0.5 0.1234", text.substr(0, 96));
    const tw::Lut3D lut = read(text);
    const tw::Lut3D expected = read("TWLUT3 42 " + name + " 2 -0.5 0.1234 56789 " + kData);
    EXPECT_TRUE(twtest::sameLut(expected, lut));
    EXPECT_NE(lut.data, read("TWLUT3 42 n 2 -0.5 0.123456789 " + kData).data);
}

TEST(TextHeader, isScannedLikeOracle_wherever96Falls) {
    for (const std::string numbers : {" 2 -0.5 0.123456789 ", " 2 0 -1.25e-05 ", " 2 0 0x1.8p+3 ",
                                      " 2 0 infinity ", " 2    -1    +1     ", " 2 0 1"}) {
        for (std::size_t length = 50; length < 100; ++length) {
            const std::string name(length, 'n');
            EXPECT_TRUE(readsLikeOracle("TWLUT3 42 " + name + numbers + kData));
            const std::string blanks(length, ' ');
            EXPECT_TRUE(readsLikeOracle("TWLUT2 42" + blanks + numbers + kData));
            EXPECT_TRUE(readsLikeOracle("TWLUT1" + blanks + numbers + kData));
            EXPECT_TRUE(readsLikeOracle("TWLUTP" + blanks + "64"));
        }
    }
}

TEST(TextHeader, isScannedLikeOracle_wherever1200Falls) {
    for (std::size_t blanks = 1160; blanks < 1200; ++blanks) {
        EXPECT_TRUE(readsLikeOracle("TWLUT3 42 n" + std::string(blanks, ' ') +
                                    "2 -0.5 0.123456789 " + kData))
            << blanks;
    }
}

TEST(TextHeader, isScannedLikeOracle_whenAnythingIsChanged) {
    const std::string seeds[] = {"TWLUT3 42 My%20LUT 2 0 1 ", "TWLUT2 -7 2 -0.5 1.5e0 ",
                                 "TWLUT1 2 0 1 ", "TWLUTP 17 ", "TWLUT3 1 %41%zz%4 3 0x1p-1 inf "};
    const std::string letters("0123456789+-.eExXpPaAfFnNiItTyY%() \t\n,_/=\0\x80", 43);
    twtest::Random random(60);
    for (int i = 0; i < 40000; ++i) {
        std::string head = seeds[static_cast<std::size_t>(random.below(5))];
        for (int change = random.below(4); change >= 0; --change) {
            const auto at = static_cast<std::size_t>(random.below(static_cast<int>(head.size())));
            const char letter =
                letters[static_cast<std::size_t>(random.below(static_cast<int>(letters.size())))];
            const int kind = random.below(3);
            if (kind == 0) head[at] = letter;
            if (kind == 1) head.insert(at, 1, letter);
            if (kind == 2 && head.size() > 1) head.erase(at, 1);
        }
        ASSERT_TRUE(readsLikeOracle(head + kData)) << "draw " << i;
    }
}

TEST(TextName, isDecoded) {
    struct Row {
        std::string encoded, name;
    };
    const Row rows[] = {{"-", ""},
                        {"--", "--"},
                        {"%2D", "-"},
                        {"-%20", "- "},
                        {"a%20b%2Fc", "a b/c"},
                        {"a%20b%2fc", "a b/c"},
                        {"%c3%A9", "\xC3\xA9"},
                        {"%00x", std::string("\0x", 2)},
                        {"%ff%FF%Ff", "\xFF\xFF\xFF"},
                        {"%", "%"},
                        {"%4", "%4"},
                        {"a%", "a%"},
                        {"%41", "A"},
                        {"%%41", "%A"},
                        {"%4g", "\x04"},
                        {"%4gb",
                         "\x04"
                         "b"},
                        {"%4%41",
                         "\x04"
                         "41"},
                        {"%g4", "%g4"},
                        {"%zz", "%zz"},
                        {"%xy%41", "%xyA"},
                        {"%4142", "A42"},
                        {"%+4", "\x04"},
                        {"\xC3\xA9", "\xC3\xA9"},
                        {"%\xC3\xA9", "%\xC3\xA9"}};
    for (const Row& row : rows)
        EXPECT_EQ(row.name, nameOf(row.encoded)) << row.encoded;
}

// All pairs after "%", also those that the library's scanner takes differently.
TEST(TextName, isDecodedLikeOracle_forEveryEscape) {
    const std::string letters = "09aAfFgGxX+-%._~\x01\x80\xFF";
    for (const char first : letters) {
        for (const char second : letters) {
            const std::string escape = {'%', first, second};
            EXPECT_EQ(twtest::decodeName("n" + escape + "m"), nameOf("n" + escape + "m")) << escape;
            EXPECT_EQ(twtest::decodeName(escape), nameOf(escape)) << escape;
        }
    }
}

TEST(TextName, isWhole_with399Characters) {
    const std::string name(399, 'n');
    EXPECT_EQ(name, nameOf(name));
    std::string escapes;
    for (int i = 0; i < 133; ++i)
        escapes += "%41";
    EXPECT_EQ(std::string(133, 'A'), nameOf(escapes));
}

TEST(TextName, leavesItsEndToTheSize_beyond399Characters) {
    tw::Lut3D lut;
    std::string error;
    const std::string text = "TWLUT3 1 " + std::string(399, 'n') + "3 2 0 1 " + kData;
    EXPECT_FALSE(tw::parseEmbeddedText(text, lut, &error));
    EXPECT_EQ("LUT data is truncated", error);
    EXPECT_EQ(std::string(399, 'n'), lut.name);
    EXPECT_EQ(3, lut.size);
    EXPECT_TRUE(readsLikeOracle(text));
    EXPECT_TRUE(readsLikeOracle("TWLUT3 1 " + std::string(398, 'n') + "%20 2 0 1 " + kData));
    EXPECT_TRUE(readsLikeOracle("TWLUT3 1 " + std::string(398, 'n') + "%41 2 0 1 " + kData));
}

TEST(TextData, skipsEverythingOutsideItsAlphabet) {
    const tw::Lut3D plain = read("TWLUT1 2 0 1 " + kData);
    const std::string strays("\n\r\t -_.,:;!?~*\0\x7F\x80\xAA\xFF", 19);
    std::string mixed;
    for (std::size_t i = 0; i < kData.size(); ++i) {
        mixed += strays[i % strays.size()];
        mixed += kData[i];
    }
    EXPECT_TRUE(twtest::sameLut(plain, read("TWLUT1 2 0 1 " + mixed)));
    EXPECT_TRUE(twtest::sameLut(plain, read("TWLUT1 2 0 1 " + kData + '\0')));
    EXPECT_TRUE(twtest::sameLut(
        plain, read("TWLUT1 2 0 1 " + kData.substr(0, 9) + "\r\n" + kData.substr(9) + "\n")));
}

TEST(TextData, endsAtEqualsSign) {
    for (const std::size_t at : {0U, 1U, 30U, 63U}) {
        std::string data = kData;
        data.insert(at, 1, '=');
        tw::Lut3D lut;
        std::string error;
        EXPECT_FALSE(tw::parseEmbeddedText("TWLUT1 2 0 1 " + data, lut, &error)) << at;
        EXPECT_EQ("LUT data is truncated", error) << at;
        EXPECT_TRUE(readsLikeOracle("TWLUT1 2 0 1 " + data));
    }
}

TEST(TextData, maySurpass_whatTheSizeNeeds) {
    const tw::Lut3D plain = read("TWLUT1 2 0 1 " + kData);
    for (const std::string surplus : {"A", "====", "AAAAAAAA", " TWLUT1", "="})
        EXPECT_TRUE(twtest::sameLut(plain, read("TWLUT1 2 0 1 " + kData + surplus))) << surplus;
}

TEST(TextNumbers, useFullStop_inDecimalCommaLocale) {
    const tw::Lut3D expected = read("TWLUT3 42 n 2 -0.5 1.25 " + kData);
    const twtest::CommaLocale locale;
    if (!locale.usable()) GTEST_SKIP() << "no locale with a decimal comma, and no way to make one";
    EXPECT_TRUE(twtest::sameLut(expected, read("TWLUT3 42 n 2 -0.5 1.25 " + kData)));
    const tw::Lut3D lowest = read("TWLUT1 2 -0.5 1.25 AAAA" + kData);
    ASSERT_FALSE(lowest.data.empty());
    EXPECT_EQ(-0.5f, lowest.data[0]);
    tw::Lut3D lut;
    EXPECT_FALSE(tw::parseEmbeddedText("TWLUT1 2 0,5 1,5 " + kData, lut, nullptr));
}

}  // namespace
