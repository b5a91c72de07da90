// embeddedLut: one shared record per content, the last eight of them.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "native/src/lut_cache.h"
#include "native/src/lut_text.h"
#include "tests/support/luts.h"
#include "tests/support/row_name.h"

namespace {

using Lut = std::shared_ptr<const tw::Lut3D>;

Lut lookUp(const std::string& bytes, std::string* error = nullptr) {
    return tw::embeddedLut(bytes.data(), bytes.size(), error);
}

// A valid text that no other test uses.
std::string textOf(long id) {
    return tw::toEmbeddedText(twtest::identityLut(2), id, "cache");
}

void lookUpSeveral(long firstId, int count) {
    for (long id = firstId; id < firstId + count; ++id)
        ASSERT_NE(nullptr, lookUp(textOf(id)));
}

std::string wide(const std::string& text) {
    const std::vector<std::uint16_t> units = tw::toUtf16(text);
    return {reinterpret_cast<const char*>(units.data()), units.size() * 2};
}

TEST(EmbeddedLut, decodesRecord) {
    std::string error = "untouched";
    const Lut lut = lookUp(textOf(100), &error);
    ASSERT_NE(nullptr, lut);
    EXPECT_EQ("untouched", error);
    tw::Lut3D expected = twtest::identityLut(2);
    expected.id = 100;
    expected.name = "cache";
    ASSERT_TRUE(tw::parseEmbeddedText(textOf(100), expected, nullptr));
    EXPECT_TRUE(twtest::sameLut(expected, *lut));
}

TEST(EmbeddedLut, decodesEveryForm) {
    const std::string data = textOf(1).substr(textOf(1).rfind(' ') + 1);
    const Lut one = lookUp("TWLUT1 2 0 1 " + data);
    const Lut two = lookUp("TWLUT2 7 2 0 1 " + data);
    const Lut three = lookUp("TWLUT3 8 n 2 0 1 " + data);
    ASSERT_TRUE(one != nullptr && two != nullptr && three != nullptr);
    EXPECT_EQ(0, one->id);
    EXPECT_EQ(7, two->id);
    EXPECT_EQ(8, three->id);
    EXPECT_EQ("n", three->name);
    EXPECT_TRUE(twtest::sameBits(one->data, three->data));
}

TEST(EmbeddedLut, givesPatternRequest) {
    const Lut pattern = lookUp("TWLUTP 17");
    ASSERT_NE(nullptr, pattern);
    tw::Lut3D expected;
    expected.probe = 17;
    EXPECT_TRUE(twtest::sameLut(expected, *pattern));
    EXPECT_EQ(pattern, lookUp("TWLUTP 17"));
}

TEST(EmbeddedLut, givesSameObject_forSameBytes) {
    const Lut first = lookUp(textOf(200));
    const std::string copy = textOf(200);
    std::string error = "untouched";
    EXPECT_EQ(first, lookUp(copy, &error));
    EXPECT_EQ("untouched", error);
}

TEST(EmbeddedLut, isNull_withoutBytesOrBelowSix) {
    std::string error = "untouched";
    EXPECT_EQ(nullptr, tw::embeddedLut(nullptr, 0, &error));
    EXPECT_EQ(nullptr, tw::embeddedLut(nullptr, 100, &error));
    EXPECT_EQ(nullptr, lookUp("TWLUT", &error));
    EXPECT_EQ(nullptr, lookUp("", &error));
    EXPECT_EQ("untouched", error);
}

TEST(EmbeddedLut, cachesNothing_belowSixBytes) {
    const Lut kept = lookUp(textOf(300));
    for (const std::string bytes : {"", "a", "ab", "abc", "abcd", "abcde", "TWLUT", "abcdf", "x"})
        lookUp(bytes);
    for (int i = 0; i < 10; ++i)
        tw::embeddedLut(nullptr, static_cast<unsigned long>(i * 10), nullptr);
    EXPECT_EQ(kept, lookUp(textOf(300)));
}

TEST(EmbeddedLut, givesDistinctEqualRecords_forBothWidths) {
    const Lut narrow = lookUp(textOf(400));
    const Lut broad = lookUp(wide(textOf(400)));
    ASSERT_TRUE(narrow != nullptr && broad != nullptr);
    EXPECT_NE(narrow, broad);
    EXPECT_TRUE(twtest::sameLut(*narrow, *broad));
}

struct Refusal {
    const char* name;
    std::string bytes;
    const char* message;
};

void PrintTo(const Refusal& row, std::ostream* out) {
    *out << row.name;
}

class EmbeddedLutRefuses : public ::testing::TestWithParam<Refusal> {};

TEST_P(EmbeddedLutRefuses, onceWithMessage_thenSilently) {
    std::string error = "before";
    EXPECT_EQ(nullptr, lookUp(GetParam().bytes, &error));
    EXPECT_EQ(GetParam().message, error);
    error = "again";
    EXPECT_EQ(nullptr, lookUp(GetParam().bytes, &error));
    EXPECT_EQ("again", error);
    EXPECT_EQ(nullptr, lookUp(GetParam().bytes));
}

INSTANTIATE_TEST_SUITE_P(
    , EmbeddedLutRefuses,
    ::testing::Values(
        Refusal{"NoTwlutText", "no LUT here", "parameter does not hold TWLUT text"},
        Refusal{"Zeros", std::string(12, '\0'), "parameter does not hold TWLUT text"},
        Refusal{"WideUnitAbove255", wide("TWLUT0") + "\x01\x01",
                "parameter does not hold TWLUT text"},
        Refusal{"BadPattern", "TWLUTP 65", "bad calibration pattern size"},
        Refusal{"BadForm3", "TWLUT3 x",
                "not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)"},
        Refusal{"BadForm2", "TWLUT2 x",
                "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)"},
        Refusal{"BadSize", wide("TWLUT1 1 0 1 AAAA"), "LUT size out of range"},
        Refusal{"Truncated", "TWLUT1 2 0 1 AAAA", "LUT data is truncated"}),
    twtest::RowName());

TEST(EmbeddedLut, isSilent_withoutErrorString) {
    EXPECT_EQ(nullptr, lookUp("TWLUT1 2 0 1 BBBB"));
    std::string error = "untouched";
    EXPECT_EQ(nullptr, lookUp("TWLUT1 2 0 1 BBBB", &error));
    EXPECT_EQ("untouched", error);
}

TEST(EmbeddedLut, isNullWithoutMessage_forNoLut) {
    std::string error = "untouched";
    for (const std::string& bytes :
         {std::string("TWLUT0"), wide("TWLUT0"), std::string("TWLUT0 x")}) {
        EXPECT_EQ(nullptr, lookUp(bytes, &error));
        EXPECT_EQ(nullptr, lookUp(bytes, &error));
    }
    EXPECT_EQ("untouched", error);
}

TEST(EmbeddedLutEviction, keepsEightContents) {
    const Lut first = lookUp(textOf(500));
    lookUpSeveral(501, 7);
    EXPECT_EQ(first, lookUp(textOf(500)));
}

TEST(EmbeddedLutEviction, decodesAgain_afterEightOthers) {
    const Lut first = lookUp(textOf(600));
    lookUpSeveral(601, 8);
    const Lut again = lookUp(textOf(600));
    ASSERT_NE(nullptr, again);
    EXPECT_NE(first, again);
    EXPECT_TRUE(twtest::sameLut(*first, *again));
}

TEST(EmbeddedLutEviction, goesByInsertion_notByUse) {
    const Lut first = lookUp(textOf(700));
    const Lut second = lookUp(textOf(701));
    for (long id = 702; id < 708; ++id) {
        lookUp(textOf(id));
        EXPECT_EQ(first, lookUp(textOf(700)));
    }
    lookUp(textOf(708));
    EXPECT_EQ(second, lookUp(textOf(701)));
    EXPECT_NE(first, lookUp(textOf(700)));
}

// The last of nine pushes the first one out; decoding that again pushes out the second, and so on.
TEST(EmbeddedLutEviction, missesEveryTime_whenNineTakeTurns) {
    std::vector<Lut> round;
    for (long id = 800; id < 809; ++id)
        round.push_back(lookUp(textOf(id)));
    for (long id = 800; id < 809; ++id) {
        const Lut again = lookUp(textOf(id));
        EXPECT_NE(round[static_cast<std::size_t>(id - 800)], again) << id;
        EXPECT_EQ(again, lookUp(textOf(id))) << id;
    }
}

TEST(EmbeddedLutEviction, countsNoLut_once) {
    const Lut first = lookUp(textOf(900));
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(nullptr, lookUp("TWLUT0 of eviction"));
    lookUpSeveral(901, 6);
    EXPECT_EQ(first, lookUp(textOf(900)));
    lookUp(textOf(907));
    EXPECT_NE(first, lookUp(textOf(900)));
}

TEST(EmbeddedLutEviction, countsFailures_andReportsThemAgainAfterwards) {
    const Lut first = lookUp(textOf(1000));
    std::string error;
    for (const std::string bytes :
         {"TWLUT1 e", "TWLUT2 e", "TWLUT3 e", "TWLUTP e", "no text", "no text 2", "no text 3"}) {
        error.clear();
        EXPECT_EQ(nullptr, lookUp(bytes, &error));
        EXPECT_NE("", error);
    }
    EXPECT_EQ(first, lookUp(textOf(1000)));
    lookUpSeveral(1001, 2);
    EXPECT_NE(first, lookUp(textOf(1000)));
    error.clear();
    EXPECT_EQ(nullptr, lookUp("TWLUT1 e", &error));
    EXPECT_EQ("not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)", error);
}

TEST(EmbeddedLutEviction, leavesRecordToItsHolders) {
    const Lut held = lookUp(textOf(1100));
    const std::weak_ptr<const tw::Lut3D> loose = lookUp(textOf(1101));
    lookUpSeveral(1102, 8);
    EXPECT_TRUE(loose.expired());
    EXPECT_EQ(1, held.use_count());
    EXPECT_EQ(1100, held->id);
    EXPECT_EQ(24U, held->data.size());
}

}  // namespace
