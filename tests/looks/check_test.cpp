// The verdicts on .cube files and texts, and each finding with its words.
#include "looks/check.h"
#include "looks/forms.h"

#include <gtest/gtest.h>

#include <cmath>

#include "native/src/lut_text.h"
#include "tests/looks/cubes.h"

namespace {

using looks::Check;
using looks::Colour;
using looks::Finding;
using looks::Weight;
using looks::writeCube;
using looks_test::curveOf;
using looks_test::lutOf;

Check check(const std::string& cube, const std::wstring& name = L"/looks/Dusk.cube") {
    return looks::checkCube(cube, name);
}

// The finding of this id; an empty one where there is none.
Finding found(const Check& check, const std::string& id) {
    for (const Finding& finding : check.findings) {
        if (finding.id == id) return finding;
    }
    return {};
}

std::string all(const Check& check) {
    std::string text;
    for (const Finding& finding : check.findings)
        text += finding.id + ": " + finding.words + "\n";
    return text;
}

tw::Lut3D gamma(int size) {
    return curveOf(size, [](float in) { return std::sqrt(in); });
}

struct Refusal {
    const char* what;
    std::string cube;
    const char* id;
    const char* words;
};

const std::string kLines = "0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 1 1\n";
const std::string kCube = "LUT_3D_SIZE 2\n" + kLines;

TEST(CheckCube, namesEachTrap) {
    const Refusal rows[] = {
        {"nothing", "", "empty", "the file is empty"},
        {"a mark", "\xEF\xBB\xBF" + kCube, "byte-order-mark",
         "malformed data line: the text begins with a byte-order mark"},
        {"UTF-16", std::string("L\0U\0T\0\n\0", 8), "utf-16",
         "malformed data line: the text is UTF-16"},
        {"lone CR", "LUT_3D_SIZE 2\r0 0 0\r", "lone-cr",
         "wrong number of values: the lines end as on classic Mac OS, with a lone CR"},
        {"commas", "LUT_3D_SIZE 2\n0,0 0,0 0,0\n", "commas",
         "malformed data line: line 2 reads \"0,0 0,0 0,0\""},
        {"lower case", "title \"x\"\n" + kCube, "lower-case",
         "malformed data line: line 1 reads \"title \"x\"\""},
        {"a short last line", "LUT_3D_SIZE 2\n" + kLines.substr(0, kLines.size() - 4) + "\n",
         "short-line", "malformed data line: line 9 reads \"1\""},
        {"markup", "# x\n\n<xml>\n" + kCube, "not-a-cube",
         "malformed data line: line 3 reads \"<xml>\""},
        {"too few", "LUT_3D_SIZE 3\n" + kLines, "wrong-count",
         "wrong number of values: 8 lines of numbers, where LUT_3D_SIZE 3 needs 27"},
        {"1D", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n", "one-dimension", "1D LUTs are not supported"},
        {"a shaper", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n" + kCube, "shaper",
         "1D LUTs are not supported: a 1D LUT stands before the 3D one"},
        {"1 point", "LUT_3D_SIZE 1\n0 0 0\n", "size", "LUT_3D_SIZE out of range"},
        {"no size", kLines, "no-size", "no LUT_3D_SIZE: the line with the size is missing"},
        {"no range", "DOMAIN_MAX 1 0 1\n" + kCube, "empty-domain",
         "bad DOMAIN_MIN/MAX: the input range is empty, or lacks numbers"},
        {"a range", "DOMAIN_MAX 1 1 1.5\n" + kCube, "domain",
         "the input range is 0 0 0 to 1 1 1.5, and the effect takes 0..1 only"}};
    for (const Refusal& row : rows) {
        const Check result = check(row.cube);
        EXPECT_FALSE(result.works) << row.what;
        ASSERT_EQ(result.findings.size(), 1u) << row.what << "\n" << all(result);
        EXPECT_EQ(result.findings[0].id, row.id) << row.what;
        EXPECT_EQ(result.findings[0].words, row.words) << row.what;
        EXPECT_NE(result.findings[0].advice, "") << row.what;
        EXPECT_EQ(result.findings[0].weight, Weight::kFatal) << row.what;
        EXPECT_FALSE(result.facts.has_value()) << row.what;
    }
}

TEST(CheckCube, findsTheMalformedLine_deepInAFile) {
    std::string cube = writeCube(gamma(17));
    std::size_t at = 0;
    for (int line = 1; line < 3000; ++line)
        at = cube.find('\n', at) + 1;
    cube.insert(at, "what? ");
    EXPECT_EQ(check(cube).findings[0].words.substr(0, 40),
              "malformed data line: line 3000 reads \"wh");
}

TEST(CheckCube, keepsMessagesOnOneLine_whateverTheFileHolds) {
    const std::string words =
        check("\x1b[31m\x01" + std::string(500, 'x') + "\n").findings[0].words;
    EXPECT_EQ(words, "malformed data line: line 1 reads \"?[31m?" + std::string(34, 'x') + "...\"");
}

TEST(CheckCube, carriesNameMatchAndFacts) {
    const Check result = check("# Tintwell match 42\n" + writeCube(gamma(9)));
    EXPECT_TRUE(result.works);
    EXPECT_EQ(result.lut.name, "Dusk");
    EXPECT_EQ(result.lut.id, 42);
    EXPECT_EQ(result.lut.size, 9);
    ASSERT_TRUE(result.facts.has_value());
    EXPECT_EQ(result.facts->points, 729u);
    ASSERT_TRUE(result.precision.has_value());
    EXPECT_GT(result.precision->largest, 0.0f);
    EXPECT_LE(result.precision->largest, 255.0f / 65535.0f / 2.0f * 1.01f);
}

// Greys without end, quick to write.
std::string greyCube(int size) {
    std::string text = "LUT_3D_SIZE " + std::to_string(size) + "\n";
    const int lines = size * size * size;
    for (int line = 0; line < lines; ++line)
        text += ".5 .5 .5\n";
    return text;
}

TEST(CheckCube, works_upTo129Points) {
    const Check result = check(greyCube(129));
    EXPECT_TRUE(result.works) << all(result);
}

TEST(CheckCube, doesNotWork_from130PointsOn) {
    const Check result = check("LUT_3D_INPUT_RANGE 0 4\n" + greyCube(130));
    EXPECT_FALSE(result.works);
    EXPECT_EQ(
        result.findings[0].words,
        "LUT size out of range: the LUT button takes the file, then says \"Choose a LUT\" and "
        "the picture passes, as 130 points an axis are more than 129");
    EXPECT_TRUE(result.facts.has_value());
    // The heaviest comes first.
    EXPECT_EQ(result.findings[1].weight, Weight::kTrap);
    EXPECT_EQ(result.findings.back().weight, Weight::kNote);
}

TEST(CheckCube, works_withANameOf399EncodedCharacters) {
    EXPECT_TRUE(check(kCube, std::wstring(399, L'x') + L".cube").works);
    EXPECT_TRUE(check(kCube, std::wstring(133, L' ') + L".cube").works);
}

TEST(CheckCube, doesNotWork_withALongerName) {
    for (const std::wstring& name : {std::wstring(400, L'x'), std::wstring(134, L' ')}) {
        const Check result = check(kCube, name + L".cube");
        EXPECT_FALSE(result.works);
        EXPECT_EQ(result.findings[0].id, "long-name");
        EXPECT_NE(result.findings[0].words.find("Choose a LUT"), std::string::npos);
    }
}

TEST(CheckCube, doesNotWork_withInfiniteValues) {
    const Check result = check("LUT_3D_SIZE 2\ninf 0 0\n" + kLines.substr(6));
    EXPECT_FALSE(result.works);
    EXPECT_EQ(found(result, "not-finite").weight, Weight::kFatal);
    EXPECT_EQ(found(result, "not-numbers").words, "1 value is no finite number");
}

TEST(CheckCube, warns_whereANumberIsNone) {
    const Check result = check("LUT_3D_SIZE 2\n0 nan nan\n" + kLines.substr(6));
    EXPECT_TRUE(result.works) << all(result);
    EXPECT_EQ(found(result, "not-numbers").words, "2 values are no finite numbers");
}

TEST(CheckCube, doesNotWork_whereTheFirstNumberIsNone) {
    EXPECT_FALSE(check("LUT_3D_SIZE 2\nnan 0 0\n" + kLines.substr(6)).works);
}

TEST(CheckCube, tellsTheNameThatIsLost) {
    const Check result = check(kCube, L"-.cube");
    EXPECT_TRUE(result.works);
    EXPECT_EQ(found(result, "name-lost").words, "the name \"-\" reads back as \"\"");
    EXPECT_NE(found(result, "no-name").words, "");
}

TEST(CheckCube, tellsTheIdentity_andNothingElse) {
    const Check result = check(writeCube(twtest::identityLut(17)));
    ASSERT_EQ(result.findings.size(), 1u) << all(result);
    EXPECT_EQ(result.findings[0].id, "identity");
}

TEST(CheckCube, tellsValuesOutside) {
    const Check result = check(writeCube(curveOf(2, [](float in) { return in * 1.5f - 0.25f; })));
    EXPECT_EQ(found(result, "below-black").words, "7 of 8 points lie below 0, the lowest at -0.25");
    EXPECT_EQ(found(result, "above-white").words, "7 of 8 points lie above 1, the highest at 1.25");
    EXPECT_EQ(found(result, "black-moved").words, "black becomes -0.25 -0.25 -0.25");
    EXPECT_EQ(found(result, "white-moved").words, "white becomes 1.25 1.25 1.25");
}

TEST(CheckCube, tellsClippedEnds) {
    const Check result = check(writeCube(
        curveOf(5, [](float in) { return std::clamp((in - 0.25f) * 2.0f, 0.0f, 1.0f); })));
    EXPECT_EQ(found(result, "clipped-shadows").words,
              "all greys from 0 up to 0.247 come out alike");
    EXPECT_EQ(found(result, "clipped-highlights").words,
              "all greys from 0.753 up to 1 come out alike");
    EXPECT_EQ(found(result, "duplicates").words.substr(0, 13), "124 of 125 po");
}

TEST(CheckCube, tellsNoClippedEnds_whereOneChannelGoesOn) {
    const auto clipped = [](float in) { return std::clamp((in - 0.25f) * 2.0f, 0.0f, 1.0f); };
    for (const std::size_t whole : {0u, 1u, 2u}) {
        const Check result = check(writeCube(lutOf(5, [&](Colour in) {
            Colour out{clipped(in[0]), clipped(in[1]), clipped(in[2])};
            out[whole] = in[whole];
            return out;
        })));
        EXPECT_EQ(found(result, "clipped-shadows").words, "") << whole;
        EXPECT_EQ(found(result, "clipped-highlights").words, "") << whole;
    }
}

TEST(CheckCube, tellsAConstant_once) {
    const Check result = check(writeCube(twtest::constantLut(0.5f)));
    EXPECT_EQ(found(result, "constant").words, "all greys come out as one colour");
    EXPECT_EQ(found(result, "clipped-shadows").words, "");
}

TEST(CheckCube, tellsGreysThatFallOrTurnColoured) {
    const Check result = check(writeCube(lutOf(3, [](Colour in) {
        return Colour{in[0], in[1] == 0.5f ? 0.0f : in[1] == 0.0f ? 0.2f : 1.0f, in[2]};
    })));
    EXPECT_EQ(found(result, "not-monotonic").words.substr(0, 25), "green falls by 50.8 steps");
    EXPECT_NE(found(result, "not-neutral").words.find("most at grey 0.502"), std::string::npos)
        << all(result);
}

TEST(CheckCube, tellsPrecisionLostToAWideRange) {
    const Check result = check("LUT_3D_SIZE 2\n0 0 200000\n" + kLines.substr(6));
    EXPECT_TRUE(result.works);
    EXPECT_EQ(found(result, "precision").weight, Weight::kTrap);
    EXPECT_NE(found(result, "precision").words.find("up to"), std::string::npos);
}

TEST(CheckCube, tellsTagsThatAreWithoutEffect) {
    const Finding range = found(check("LUT_3D_INPUT_RANGE 0.0 4.0\n" + kCube), "passed-over");
    EXPECT_EQ(range.words, "the effect passes over LUT_3D_INPUT_RANGE");
    EXPECT_EQ(range.weight, Weight::kTrap);
    EXPECT_EQ(found(check("LUT_3D_INPUT_RANGE 0.0 1.0\n" + kCube), "passed-over").weight,
              Weight::kNote);
    EXPECT_EQ(found(check(" \tLUT_IN_VIDEO_RANGE\r\n" + kCube), "passed-over").words,
              "the effect passes over LUT_IN_VIDEO_RANGE");
    EXPECT_EQ(found(check(kCube + "LUT_OUT_VIDEO_RANGE"), "passed-over").words,
              "the effect passes over LUT_OUT_VIDEO_RANGE");
    EXPECT_EQ(found(check("# LUT_IN_VIDEO_RANGE\n" + kCube), "passed-over").words, "");
}

TEST(CheckText, takesWhatTheReaderTakes) {
    const Check result = looks::checkText(tw::toEmbeddedText(gamma(5), 7, "Dusk"));
    EXPECT_TRUE(result.works);
    EXPECT_EQ(result.lut.name, "Dusk");
    EXPECT_EQ(result.lut.id, 7);
    EXPECT_TRUE(result.facts.has_value());
    EXPECT_FALSE(result.precision.has_value());
}

TEST(CheckText, tellsTheReadersReason) {
    const Check result = looks::checkText("TWLUT1 130 0 1 AAAA");
    EXPECT_FALSE(result.works);
    EXPECT_EQ(result.lut.size, 0);
    EXPECT_EQ(result.findings[0].words, "LUT size out of range");
}

TEST(CheckText, doesNotWork_withoutALook) {
    EXPECT_EQ(looks::checkText("TWLUT0").findings[0].words, "the text says that there is no look");
    EXPECT_EQ(looks::checkText("TWLUTP 17").findings[0].words,
              "the text asks for the calibration pattern of size 17, which is no look");
    EXPECT_FALSE(looks::checkText("TWLUT0").works);
    EXPECT_FALSE(looks::checkText("TWLUTP 17").works);
}

}  // namespace
