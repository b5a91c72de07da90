#include "tintwell_host/look_files/project_markup.h"

#include <gtest/gtest.h>

namespace program_test {
namespace {

using program::ProjectMarkup;

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

TEST(ProjectMarkup, tellsTheElementsOfTheNextByte) {
    ProjectMarkup markup;
    const auto pathAfter = [&markup](const std::string& bytes) {
        markup.take(bytes.data(), bytes.size());
        return markup.here().path;
    };
    EXPECT_EQ(pathAfter(""), "");
    EXPECT_EQ(pathAfter("<a><b x='1'>"), "/a/b");
    EXPECT_EQ(pathAfter("text</"), "/a/b");
    EXPECT_EQ(pathAfter("b><c"), "/a");
    EXPECT_EQ(pathAfter("/>"), "/a");
    EXPECT_EQ(pathAfter("</a>"), "");
}

TEST(ProjectMarkup, tellsNoPlace_fromABreachOn) {
    ProjectMarkup markup;
    const std::string bytes = "<a><b></a><c>";
    markup.take(bytes.data(), bytes.size());
    EXPECT_EQ(markup.here().path, "");
    markup.take("<d>", 3);
    EXPECT_EQ(markup.here().path, "");
}

TEST(ProjectMarkup, tellsNoPlace_deeperThanAHundred) {
    ProjectMarkup markup;
    const std::string hundred = repeated("<a>", 100);
    markup.take(hundred.data(), hundred.size());
    EXPECT_EQ(markup.here().path, repeated("/a", 100));
    markup.take("<a>", 3);
    EXPECT_EQ(markup.here().path, "");
}

TEST(ProjectMarkup, tellsNoPlace_withinATagWithoutEnd) {
    ProjectMarkup markup;
    const std::string start = "<a><b c='";
    markup.take(start.data(), start.size());
    EXPECT_EQ(markup.here().path, "/a");
    const std::string rest(2 << 20, 'x');
    markup.take(rest.data(), rest.size());
    EXPECT_EQ(markup.here().path, "");
}

TEST(ProjectMarkup, findsTheNearestNames) {
    ProjectMarkup markup;
    const std::string bytes =
        "<P>"
        "<ClipTrackItem ObjectID='1'><A ObjectRef='2'/><B ObjectRef='9'/></ClipTrackItem>"
        "<Chain ObjectID='2'><A ObjectRef='3'/><A ObjectRef='1'/></Chain>"
        "<Effect ObjectID='3'><DisplayName>Tint</DisplayName><A ObjectRef='4'/></Effect>"
        "<Value ObjectID='4'><Name>LUT</Name></Value>"
        "<SubClip ObjectID='9'><Name>A&amp;B</Name><Name>other</Name></SubClip>"
        "<Value ObjectID='5'/>"
        "</P>";
    markup.take(bytes.data(), bytes.size());
    EXPECT_EQ(markup.namesOf(4).clip, "A&B");
    EXPECT_EQ(markup.namesOf(4).effect, "Tint");
    EXPECT_EQ(markup.namesOf(2).clip, "A&B");
    EXPECT_EQ(markup.namesOf(5).clip + markup.namesOf(5).effect, "");
    EXPECT_EQ(markup.namesOf(77).clip, "");
}

// Names and references cost memory, and a project may claim to have any number.
TEST(ProjectMarkup, forgetsNames_whenThereAreTooMany) {
    ProjectMarkup markup;
    const std::string some = repeated("<Name/>", 1000);
    const std::string start = "<P><Effect ObjectID='3'><DisplayName>Tint</DisplayName>";
    markup.take(start.data(), start.size());
    for (int i = 0; i < 200; ++i)
        markup.take(some.data(), some.size());
    EXPECT_EQ(markup.namesOf(3).effect, "");
    EXPECT_EQ(markup.here().path, "");
}

}  // namespace
}  // namespace program_test
