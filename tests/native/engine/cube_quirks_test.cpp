// .cube texts as programs write them, editors save them and transfers damage them: a name, the
// text, and what the parser makes of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/cube_messages.h"
#include "tests/support/luts.h"

namespace {

using twtest::kCount;
using twtest::kData;
using twtest::kDomain;
using twtest::kNoSize;
using twtest::kOneD;
using twtest::kRange;

// The cube that the texts are about: its size, its first line and the seven others.
const std::string kSize = "LUT_3D_SIZE 2\n";
const std::string kFirst = "0 0.25 0.5\n";
const std::string kRest = "1 2 3\n4 5 6\n7 8 9\n10 11 12\n13 14 15\n16 17 18\n-19 20.5 1e3\n";
const std::string kBody = kFirst + kRest;
const std::string kPlain = kSize + kBody;
const std::vector<float> kValues = {0,  0.25f, 0.5f, 1,  2,  3,  4,  5,  6,  7,   8,     9,
                                    10, 11,    12,   13, 14, 15, 16, 17, 18, -19, 20.5f, 1000};

// What is left in the record: of a text that is refused the size and the domain.
struct Outcome {
    const char* message = nullptr;  // null: taken
    tw::Lut3D lut;
};

// The cube, but for its first values; other sizes hold zeros.
Outcome taken(const std::vector<float>& first = {}, int size = 2) {
    Outcome outcome{nullptr, twtest::blankLut(size)};
    if (size == 2) outcome.lut.data = kValues;
    std::copy(first.begin(), first.end(), outcome.lut.data.begin());
    return outcome;
}

Outcome refused(const char* message, int size = 2) {
    Outcome outcome{message, {}};
    outcome.lut.size = size;
    return outcome;
}

Outcome withDomain(Outcome outcome, const std::vector<float>& low, const std::vector<float>& high) {
    for (std::size_t c = 0; c < 3; ++c)
        twtest::setDomain(outcome.lut, static_cast<int>(c), low[c], high[c]);
    return outcome;
}

struct Quirk {
    const char* name;
    std::string text;
    Outcome outcome;
};

void PrintTo(const Quirk& row, std::ostream* out) {
    *out << row.name;
}

std::string rowName(const ::testing::TestParamInfo<Quirk>& row) {
    return row.param.name;
}

class CubeQuirk : public ::testing::TestWithParam<Quirk> {};

TEST_P(CubeQuirk, hasItsOutcome) {
    const auto& [name, text, outcome] = GetParam();
    const char* const expected = outcome.message ? outcome.message : "untouched";
    tw::Lut3D lut;
    std::string message = "untouched";
    EXPECT_EQ(tw::parseCube(text, lut, &message), outcome.message == nullptr);
    EXPECT_EQ(message, expected);
    EXPECT_TRUE(twtest::sameLut(outcome.lut, lut));
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

// The cube with its lines ending like that.
std::string ending(const std::string& end) {
    return replaced(kPlain, "\n", end);
}

// The cube with other numbers in its first line.
std::string numbers(const std::string& first) {
    return kSize + first + "\n" + kRest;
}

std::string bytes(const char* text, std::size_t count) {
    return {text, count};
}

// Two bytes a character, the low one first or last.
std::string wide(const std::string& text, bool lowFirst) {
    std::string units;
    for (const char c : text)
        units += lowFirst ? std::string{c, '\0'} : std::string{'\0', c};
    return units;
}

std::string zeros(int size) {
    std::string text;
    for (int i = 0; i < size * size * size; ++i)
        text += "0 0 0\n";
    return text;
}

// In UTF-8, as word processors put them in the place of the plain ones.
const std::string kNoBreak = "\xC2\xA0";
const std::string kMinus = "\xE2\x88\x92";

const float kInf = std::strtof("inf", nullptr);
const float kNan = std::strtof("nan", nullptr);

INSTANTIATE_TEST_SUITE_P(
    Titles, CubeQuirk,
    ::testing::Values(Quirk{"Quoted", "TITLE \"Warm\"\n" + kPlain, taken()},
                      Quirk{"Unquoted", "TITLE Warm Look\n" + kPlain, taken()},
                      Quirk{"QuotesInside", "TITLE \"the \"warm\" one\"\n" + kPlain, taken()},
                      Quirk{"QuoteNotClosed", "TITLE \"Warm\n" + kPlain, taken()},
                      Quirk{"Empty", "TITLE\n" + kPlain, taken()},
                      Quirk{"GluedToQuote", "TITLE\"Warm\"\n" + kPlain, taken()},
                      Quirk{"HoldsKeyword", "TITLE LUT_1D_SIZE 4\n" + kPlain, taken()},
                      Quirk{"AfterData", kPlain + "TITLE \"Warm\"\n", taken()},
                      Quirk{"Latin1", "TITLE \"\xC9t\xE9\"\n" + kPlain, taken()},
                      Quirk{"Utf8", "TITLE \"\xC3\x89t\xC3\xA9 \xE6\x97\xA5\"\n" + kPlain, taken()},
                      Quirk{"TwoLines", "TITLE \"Warm\nLook\"\n" + kPlain, taken()},
                      Quirk{"TwoLinesInLowerCase", "TITLE \"warm\nlook\"\n" + kPlain,
                            refused(kData, 0)},
                      Quirk{"LowerCase", "title \"Warm\"\n" + kPlain, refused(kData, 0)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    LineEnds, CubeQuirk,
    ::testing::Values(
        Quirk{"CrLf", ending("\r\n"), taken()}, Quirk{"CrCrLf", ending("\r\r\n"), taken()},
        Quirk{"LfCr", ending("\n\r"), taken()}, Quirk{"BlankLines", ending("\n\n \t\n"), taken()},
        Quirk{"Mixed", kSize + replaced(kBody, "2 3\n", "2 3\r\n"), taken()},
        Quirk{"LastOneMissing", kPlain.substr(0, kPlain.size() - 1), taken()},
        Quirk{"ManyAtTheEnd", kPlain + std::string(1000, '\n'), taken()},
        Quirk{"LoneCr", ending("\r"), refused(kCount)},
        Quirk{"LoneCrAfterComment", "# Warm\r" + ending("\r"), refused(kNoSize, 0)},
        Quirk{"LoneCrAfterTitle", "TITLE \"Warm\"\r" + ending("\r"), refused(kNoSize, 0)},
        Quirk{"LoneCrInData", kSize + replaced(kBody, "\n", "\r"), refused(kCount)},
        Quirk{"UnicodeLineSeparator", ending("\xE2\x80\xA8"), refused(kCount)},
        Quirk{"FormFeedBetweenLines", kSize + kFirst + "\f\n" + kRest, refused(kCount)},
        Quirk{"FormFeedAtTheEnd", kPlain + "\f\n", refused(kData)},
        Quirk{"FormFeedBeforeComment", kSize + "\f# c\n" + kBody, refused(kData)},
        Quirk{"VerticalTabBeforeKeyword", "\v" + kPlain, refused(kData, 0)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Blanks, CubeQuirk,
    ::testing::Values(
        Quirk{"Tabs", replaced(kPlain, " ", "\t"), taken()},
        Quirk{"Several", replaced(kPlain, " ", "  \t "), taken()},
        Quirk{"LeadingOnes", replaced("\n" + kPlain, "\n", "\n \t\r ").substr(1), taken()},
        Quirk{"TrailingOnes", ending(" \t \n"), taken()},
        Quirk{"FormFeeds", kSize + replaced(kBody, " ", "\f"), taken()},
        Quirk{"VerticalTabLeads", kSize + "\v" + kBody, taken()},
        Quirk{"HundredThousand", numbers("0" + std::string(100000, ' ') + "0.25 0.5"), taken()},
        Quirk{"NoBreakSpaceLeads", numbers(kNoBreak + "0 0.25 0.5"), refused(kData)},
        Quirk{"NoBreakSpaceBetween", numbers("0" + kNoBreak + "0.25 0.5"), refused(kData)},
        Quirk{"NoBreakSpaceInLatin1", numbers("0" + kNoBreak.substr(1) + "0.25 0.5"),
              refused(kData)},
        Quirk{"NoBreakSpaceTrails", numbers("0 0.25 0.5" + kNoBreak), taken()},
        Quirk{"NoBreakSpaceLine", kPlain + kNoBreak + "\n", refused(kData)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Comments, CubeQuirk,
    ::testing::Values(Quirk{"BetweenLines", kSize + kFirst + "# b\n  #c\n#\n" + kRest, taken()},
                      Quirk{"BehindData", numbers("0 0.25 0.5 # black"), taken()},
                      Quirk{"GluedToData", numbers("0 0.25 0.5#black"), taken()},
                      Quirk{"BehindSize", "LUT_3D_SIZE 2 # points\n" + kBody, taken()},
                      Quirk{"HoldsKeyword", "# LUT_1D_SIZE 4\n#LUT_3D_SIZE 9\n" + kPlain, taken()},
                      Quirk{"OfAMillionBytes", "#" + std::string(1000000, 'x') + "\n" + kPlain,
                            taken()},
                      Quirk{"BeforeThirdNumber", numbers("0 0.25 # 0.5"), refused(kData)},
                      Quirk{"Semicolon", "; Warm\n" + kPlain, refused(kData, 0)},
                      Quirk{"Slashes", "// Warm\n" + kPlain, refused(kData, 0)},
                      Quirk{"Dashes", kSize + "-- Warm\n" + kBody, refused(kData)},
                      Quirk{"Quote", kSize + "\"0 0 0\"\n" + kBody, refused(kData)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Numbers, CubeQuirk,
    ::testing::Values(
        Quirk{"Integers", numbers("0 255 1023"), taken({0, 255, 1023})},
        Quirk{"Exponents", numbers("1.5e-07 1E-7 1e+2"), taken({1.5e-07f, 1e-7f, 100})},
        Quirk{"PlusSigns", numbers("+1 +.5 +1.0e+0"), taken({1, 0.5f, 1})},
        Quirk{"PointLeads", numbers(".5 -.25 .0"), taken({0.5f, -0.25f, 0})},
        Quirk{"PointTrails", numbers("5. 0. -1."), taken({5, 0, -1})},
        Quirk{"LeadingZeros", numbers("00.5 007 -00"), taken({0.5f, 7, -0.0f})},
        Quirk{"Hexadecimal", numbers("0x1p-1 0x.8 0XA"), taken({0.5f, 0.5f, 10})},
        Quirk{"Nan", numbers("nan -nan NaN"), taken({kNan, kNan, kNan})},
        Quirk{"Inf", numbers("inf -inf Infinity"), taken({kInf, -kInf, kInf})},
        Quirk{"NanWithDetails", numbers("nan(ind) -nan(snan) 1"), taken({kNan, kNan, 1})},
        Quirk{"TooLarge", numbers("1e999 -1e39 1e-999"), taken({kInf, -kInf, 0})},
        Quirk{"OfAHundredThousandDigits", numbers("0." + std::string(100000, '3') + " 0 0"),
              taken({1.0f / 3, 0, 0})},
        Quirk{"FourInALine", numbers("0 0.25 0.5 1"), taken()},
        Quirk{"CapitalsLead", kSize + "NAN 0 0\nINF 0 0\nINFINITY 1 1 1\n" + kBody, taken()},
        Quirk{"CapitalInfInsteadOfData", numbers("INF 0 0"), refused(kCount)},
        Quirk{"PoundInf", numbers("1.#INF 0 0"), refused(kData)},
        Quirk{"PoundInfLast", numbers("0 0 1.#INF"), taken({0, 0, 1})},
        Quirk{"DecimalCommas", numbers("0,0 0,25 0,5"), refused(kData)},
        Quirk{"DecimalCommaLast", numbers("0 0 0,5"), taken({0, 0, 0})},
        Quirk{"CommasBetween", numbers("0, 0.25, 0.5"), refused(kData)},
        Quirk{"CommasWithoutBlanks", numbers("0,0.25,0.5"), refused(kData)},
        Quirk{"SemicolonsBetween", numbers("0;0.25;0.5"), refused(kData)},
        Quirk{"ExponentOfD", numbers("1.5D-07 0 0"), refused(kData)},
        Quirk{"ExponentOfDLast", numbers("0 0 1.5D-07"), taken({0, 0, 1.5f})},
        Quirk{"SuffixF", numbers("0.5f 0.5f 0.5f"), refused(kData)},
        Quirk{"Percent", numbers("0% 25% 50%"), refused(kData)},
        Quirk{"UnicodeMinus", numbers(kMinus + "0.5 0 0"), refused(kData)},
        Quirk{"Brackets", numbers("[0 0.25 0.5]"), refused(kData)},
        Quirk{"RowNumber", numbers("1: 0 0.25 0.5"), refused(kData)},
        Quirk{"Words", numbers("red green blue"), refused(kData)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Lines, CubeQuirk,
    ::testing::Values(Quirk{"OneTooFew", kSize + kRest, refused(kCount)},
                      Quirk{"OneTooMany", kPlain + "0 0 0\n", refused(kCount)},
                      Quirk{"TwoColoursInOne", kSize + "0 0.25 0.5 1 2 3\n" + kRest.substr(6),
                            refused(kCount)},
                      Quirk{"AllInOne", kSize + replaced(kBody, "\n", " "), refused(kCount)},
                      Quirk{"OneNumberEach", kSize + replaced(kBody, " ", "\n"), refused(kData)},
                      Quirk{"TwoNumbersInTheLast", kSize + kRest + "1 2\n", refused(kData)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Keywords, CubeQuirk,
    ::testing::Values(
        Quirk{"LowerCase", "lut_3d_size 2\n" + kBody, refused(kData, 0)},
        Quirk{"LowerCaseDomain", kSize + "domain_min 0 0 0\n" + kBody, refused(kData)},
        Quirk{"LowerCaseUnknown", kSize + "lut_in_video_range\n" + kBody, refused(kData)},
        Quirk{"MixedCase", "Lut_3d_Size 2\n" + kBody, refused(kNoSize, 0)},
        Quirk{"VideoRange", "LUT_IN_VIDEO_RANGE\nLUT_OUT_VIDEO_RANGE\n" + kPlain, taken()},
        Quirk{"FullRange", kSize + "LUT_IN_FULL_RANGE\nLUT_OUT_FULL_RANGE\n" + kBody, taken()},
        Quirk{"InputRange", kSize + "LUT_3D_INPUT_RANGE 0.0 4.0\n" + kBody, taken()},
        Quirk{"InputRangeBesideTitleAndDomain",
              "TITLE \"x\"\nLUT_3D_INPUT_RANGE 0 4\nDOMAIN_MAX 1 1 1\n" + kPlain, taken()},
        Quirk{"OneDInputRange", "LUT_1D_INPUT_RANGE 0.0 1.0\n" + kPlain, taken()},
        Quirk{"OneDSize", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n", refused(kOneD, 0)},
        Quirk{"ShaperBeforeCube",
              "LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE 0 1\n" + kSize + "0 0 0\n1 1 1\n" + kBody,
              refused(kOneD, 0)},
        Quirk{"ShaperSizeAfterCubeSize", kSize + "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n" + kBody,
              refused(kOneD)},
        Quirk{"Unknown", "X\nZEBRA 1 2 3\n_x 1 2 3\nA\n" + kPlain, taken()},
        Quirk{"AlmostOneD", "LUT_1D_SIZ 4\n" + kPlain, taken()},
        Quirk{"EndMarker", kPlain + "END\n", taken()}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Sizes, CubeQuirk,
    ::testing::Values(Quirk{"AfterData", kBody + "LUT_3D_SIZE 2", taken()},
                      Quirk{"BetweenData", kFirst + kSize + kRest, taken()},
                      Quirk{"Twice", "LUT_3D_SIZE 3\n" + kBody + "LUT_3D_SIZE 2\n", taken()},
                      Quirk{"TwiceBeforeData", "LUT_3D_SIZE 256\nLUT_3D_SIZE 2\n" + kBody, taken()},
                      Quirk{"GluedToKeyword", "LUT_3D_SIZE2\n" + kBody, taken()},
                      Quirk{"PlusSign", "LUT_3D_SIZE +2\n" + kBody, taken()},
                      Quirk{"ThreeTimesInALine", "LUT_3D_SIZE 2 2 2\n" + kBody, taken()},
                      Quirk{"WithCrosses", "LUT_3D_SIZE 2x2x2\n" + kBody, taken()},
                      Quirk{"Point0", "LUT_3D_SIZE 33.0\n" + zeros(33), taken({}, 33)},
                      Quirk{"Fraction", "LUT_3D_SIZE 2.9\n" + kBody, taken()},
                      Quirk{"Padded", "LUT_3D_SIZE 0002\n" + kBody, taken()},
                      Quirk{"Exponent", "LUT_3D_SIZE 2e1\n" + kBody, taken()},
                      Quirk{"EqualsSign", "LUT_3D_SIZE=2\n" + kBody, refused(kRange, 0)},
                      Quirk{"Colon", "LUT_3D_SIZE: 2\n" + kBody, refused(kRange, 0)},
                      Quirk{"Quoted", "LUT_3D_SIZE \"2\"\n" + kBody, refused(kRange, 0)},
                      Quirk{"Hexadecimal", "LUT_3D_SIZE 0x2\n" + kBody, refused(kRange, 0)},
                      Quirk{"Word", "LUT_3D_SIZE two\n" + kBody, refused(kRange, 0)},
                      Quirk{"OfHugeCube", "LUT_3D_SIZE 4096\n" + kBody, refused(kRange, 4096)},
                      Quirk{"OfLattice", "LUT_3D_SIZE 8\n" + kBody, refused(kCount, 8)},
                      Quirk{"AloneAtTheEnd", kBody + "LUT_3D_SIZE\n", refused(kRange, 0)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Domains, CubeQuirk,
    ::testing::Values(
        Quirk{"WrittenOut", "DOMAIN_MIN 0.0 0.0 0.0\nDOMAIN_MAX 1.0 1.0 1.0\n" + kPlain, taken()},
        Quirk{"Exponents", "DOMAIN_MIN 0e+00 0E0 .0\nDOMAIN_MAX 1e0 10e-1 1.\n" + kPlain, taken()},
        Quirk{"AfterData", kPlain + "DOMAIN_MAX 2 3 4\n",
              withDomain(taken(), {0, 0, 0}, {2, 3, 4})},
        Quirk{"Twice", "DOMAIN_MAX 2 2 2\nDOMAIN_MAX 1 1 1\n" + kPlain, taken()},
        Quirk{"OfBytes", "DOMAIN_MAX 255 255 255\n" + kPlain,
              withDomain(taken(), {0, 0, 0}, {255, 255, 255})},
        Quirk{"FourNumbers", "DOMAIN_MAX 1 1 1 1\n" + kPlain, taken()},
        Quirk{"OneNumber", "DOMAIN_MAX 1\nTITLE x\n" + kPlain,
              withDomain(refused(kDomain), {0, 0, 0}, {1, 0, 0})},
        Quirk{"DecimalCommas", "DOMAIN_MAX 1,0 1,0 1,0\n" + kPlain,
              withDomain(refused(kDomain), {0, 0, 0}, {1, 0, 0})},
        Quirk{"WithoutNumbers", "DOMAIN_MIN\nDOMAIN_MAX\nTITLE x\n" + kPlain,
              withDomain(refused(kDomain), {0, 0, 0}, {0, 0, 0})},
        Quirk{"WithoutNumbersBeforeData", kSize + "DOMAIN_MIN\n" + kBody,
              withDomain(taken(), {0, 0.25f, 0.5f}, {1, 1, 1})}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Encodings, CubeQuirk,
    ::testing::Values(
        Quirk{"Utf8Bom", "\xEF\xBB\xBF" + kPlain, refused(kData, 0)},
        Quirk{"Utf8BomBeforeTitle", "\xEF\xBB\xBFTITLE \"x\"\n" + kPlain, refused(kData, 0)},
        Quirk{"Utf8BomBeforeComment", "\xEF\xBB\xBF# c\n" + kPlain, refused(kData, 0)},
        Quirk{"Utf16LittleEndian", "\xFF\xFE" + wide(kPlain, true), refused(kData, 0)},
        Quirk{"Utf16BigEndian", "\xFE\xFF" + wide(kPlain, false), refused(kData, 0)},
        Quirk{"Utf16LittleEndianWithoutBom", wide(kPlain, true), refused(kData, 0)},
        Quirk{"Utf16BigEndianWithoutBom", wide(kPlain, false), refused(kData, 0)},
        Quirk{"Utf16CommentWithoutBom", bytes("#\0\n\0#\0", 6), refused(kData, 0)},
        Quirk{"Latin1Comment", "# caf\xE9\n" + kPlain, taken()},
        Quirk{"NulInSkippedLines", bytes("TITLE \0 LUT_1D_SIZE\n#\0\n", 23) + kPlain, taken()},
        Quirk{"NulsBehindData", numbers("0 0.25 0.5" + bytes("\0\0 7", 4)), taken()},
        Quirk{"NulInsideNumber", numbers(bytes("0.\0005 0 0", 8)), refused(kData)},
        Quirk{"NulsAtTheEnd", kPlain + std::string(512, '\0'), refused(kData)},
        Quirk{"NothingButNuls", std::string(65536, '\0'), refused(kData, 0)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Tails, CubeQuirk,
    ::testing::Values(Quirk{"ControlZ", kPlain + "\x1A", refused(kData)},
                      Quirk{"LowerCaseWords", kPlain + "end of file\n", refused(kData)},
                      Quirk{"WordsWithACapital", kPlain + "Made on a rainy day\n", taken()},
                      Quirk{"Dashes", kPlain + "---\n", refused(kData)},
                      Quirk{"Markup", kPlain + "</pre></html>\n", refused(kData)},
                      Quirk{"SameFileAgain", kPlain + kPlain, refused(kCount)}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    NoCubes, CubeQuirk,
    ::testing::Values(Quirk{"Mesh", "3DMESH\nMesh 4 12\n0 64 128\n", refused(kData, 0)},
                      Quirk{"NumbersWithHeader", "LUTFILE 1.0\n3 3\n2 2 2\n0 0 0 0 0 0\n",
                            refused(kNoSize, 0)},
                      Quirk{"Markup", "<?xml version=\"1.0\"?>\n<look/>\n", refused(kData, 0)},
                      Quirk{"Json", "{\"size\": 2}\n", refused(kData, 0)},
                      Quirk{"ColumnHeads", "r,g,b\n0,0,0\n", refused(kData, 0)},
                      Quirk{"ColumnHeadsInCapitals", "R,G,B\n0,0,0\n", refused(kData, 0)},
                      Quirk{"Executable", bytes("\177ELF\2\1\1\0\0", 9), refused(kData, 0)},
                      Quirk{"Gzip", bytes("\x1F\x8B\x08\0", 4), refused(kData, 0)},
                      Quirk{"Zip", bytes("PK\3\4\0\0LUT_3D_SIZE 2", 19), refused(kNoSize, 0)}),
    rowName);

}  // namespace
