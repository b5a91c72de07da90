#include "looks/look_list.h"

#include <gtest/gtest.h>

#include "native/src/lut_text.h"
#include "tests/support/luts.h"

namespace {

using looks::FoundText;
using looks::LookList;

FoundText found(const std::string& text) {
    return {.text = text, .offset = 0, .base64 = false, .wide = false};
}

std::string textOf(std::uint64_t seed, long id = 7, const std::string& name = "Dusk") {
    return tw::toEmbeddedText(twtest::scatteredLut(2, seed), id, name);
}

TEST(LookList, holdsEachLookOnce) {
    std::vector<std::string> fresh;
    LookList list([&fresh](const tw::Lut3D& lut, const std::string& text) {
        fresh.push_back(lut.name + " " + text.substr(0, 9));
    });
    int noted = 0;
    for (int i = 0; i < 1000; ++i)
        noted +=
            list.add(found(textOf(static_cast<std::uint64_t>(i % 3))), static_cast<std::size_t>(i));
    EXPECT_EQ(noted, 300);
    ASSERT_EQ(list.looks().size(), 3u);
    EXPECT_EQ(list.looks()[0].found.count, 334u);
    EXPECT_EQ(list.looks()[2].found.count, 333u);
    EXPECT_EQ(list.looks()[1].found.places.size(), looks::Occurrences::kMostPlaces);
    EXPECT_EQ(list.looks()[1].found.places[1], 4u);
    EXPECT_EQ(fresh, (std::vector<std::string>(3, "Dusk TWLUT3 7 ")));
}

TEST(LookList, tellsWhatALookIs) {
    LookList list;
    list.add(found("TWLUT3 42 My%20LUT 2 -0.5 1.5 " + std::string(61, 'A') + "P//"), 0);
    list.add(found("TWLUTP 17"), 1);
    list.add(found("TWLUT0"), 2);
    ASSERT_EQ(list.looks().size(), 3u);
    const looks::ListedLook& look = list.looks()[0];
    EXPECT_EQ(look.kind, tw::LutKind::kLut);
    EXPECT_EQ(look.name, "My LUT");
    EXPECT_EQ(look.id, 42);
    EXPECT_EQ(look.size, 2);
    EXPECT_EQ(look.lowest, -0.5f);
    EXPECT_EQ(look.highest, 1.5f);
    EXPECT_EQ(list.looks()[1].kind, tw::LutKind::kPattern);
    EXPECT_EQ(list.looks()[1].probe, 17);
    EXPECT_EQ(list.looks()[2].kind, tw::LutKind::kNone);
}

TEST(LookList, takesAnotherNameOrMatchForAnotherLook) {
    LookList list;
    list.add(found(textOf(1)), 0);
    list.add(found(textOf(1, 8)), 0);
    list.add(found(textOf(1, 7, "Dawn")), 0);
    list.add(found(textOf(2)), 0);
    EXPECT_EQ(list.looks().size(), 4u);
}

TEST(LookList, takesOtherFormsOfATextForTheSameLook) {
    LookList list;
    const std::string text = textOf(1, 0, "");
    list.add(found(text), 0);
    list.add(found("TWLUT1" + text.substr(text.find(" 2 "))), 0);
    EXPECT_EQ(list.looks().size(), 1u);
}

TEST(LookList, countsUnreadableTexts_byTheReadersReason) {
    LookList list;
    list.add(found("TWLUT1 130 0 1 AAAA"), 0);
    list.add(found("TWLUT1 2 0 1 AAAA"), 1);
    list.add(found("TWLUT1 1 0 1 AAAA"), 2);
    ASSERT_EQ(list.unreadable().size(), 2u);
    EXPECT_EQ(list.unreadable()[0].reason, "LUT size out of range");
    EXPECT_EQ(list.unreadable()[0].found.places, (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(list.unreadable()[1].reason, "LUT data is truncated");
    EXPECT_TRUE(list.looks().empty());
}

TEST(LookList, countsOnly_beyondItsLimit) {
    LookList list;
    const std::string data = textOf(1).substr(textOf(1).find(" 2 "));
    for (std::size_t i = 0; i < LookList::kMostLooks + 5; ++i)
        list.add(found("TWLUT3 " + std::to_string(i) + " -" + data), 0);
    EXPECT_EQ(list.looks().size(), LookList::kMostLooks);
    EXPECT_EQ(list.beyond(), 5u);
    list.add(found("TWLUT3 0 -" + data), 0);
    EXPECT_EQ(list.beyond(), 5u);
    EXPECT_EQ(list.looks()[0].found.count, 2u);
}

}  // namespace
