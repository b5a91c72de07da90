#include "looks/edit_request_reader.h"

#include <gtest/gtest.h>

#include <limits>

#include "effect/edit_request_line.h"

namespace {

using looks::EditRequest;
using looks::readEditRequest;
using looks::RequestState;

constexpr std::int64_t kTime = 1732100000000;

// What the effect wrote is read whole.
void expectBack(std::int64_t id, const std::string& name, std::int64_t at = kTime) {
    const EditRequest request = readEditRequest(tw_effect::editRequestLine(id, name, at));
    EXPECT_EQ(request.state, RequestState::kWhole) << name;
    EXPECT_EQ(request.id, id);
    EXPECT_EQ(request.name, name);
    EXPECT_EQ(request.at, at);
}

void expectForeign(const std::string& contents) {
    const EditRequest request = readEditRequest(contents);
    EXPECT_EQ(request.state, RequestState::kForeign) << contents;
    EXPECT_EQ(request.id, 0);
    EXPECT_EQ(request.name, std::nullopt);
    EXPECT_EQ(request.at, std::nullopt);
}

TEST(ReadEditRequest, readsWhatTheEffectWrites) {
    expectBack(42, "Dusk");
    expectBack(1, "");
    expectBack(std::numeric_limits<std::int64_t>::max(), "a", 0);
}

TEST(ReadEditRequest, readsNamesThatJSONRefuses) {
    expectBack(7, "two\nlines");
    expectBack(7, "tab\tand\x01");
    expectBack(7, "\xFF\x80 not UTF-8");
}

TEST(ReadEditRequest, readsQuotesAndBackslashes) {
    expectBack(7, "a \"b\" c");
    expectBack(7, "C:\\looks\\");
    expectBack(7, "\\\"");
}

TEST(ReadEditRequest, readsNamesThatLookLikeARequest) {
    expectBack(7, "\",\"at\":1}\n");
    expectBack(7, "}\n");
    expectBack(7, "{\"id\":8,\"name\":\"x\",\"at\":1}\n");
}

TEST(ReadEditRequest, waitsForTheEnd) {
    const std::string line = tw_effect::editRequestLine(42, "a}\nb\\\"c", kTime);
    for (std::size_t length = 0; length < line.size(); ++length) {
        const EditRequest request = readEditRequest(line.substr(0, length));
        EXPECT_EQ(request.state, RequestState::kUnfinished) << length;
        EXPECT_EQ(request.id, 0) << length;
        EXPECT_EQ(request.name, std::nullopt) << length;
    }
}

TEST(ReadEditRequest, takesTheIdOfALineCutInTheName) {
    const std::string line = tw_effect::editRequestLine(42, std::string(399, '"'), kTime);
    ASSERT_EQ(line.size(), looks::kLongestRequest);
    const EditRequest request = readEditRequest(line);
    EXPECT_EQ(request.state, RequestState::kCut);
    EXPECT_EQ(request.id, 42);
    EXPECT_EQ(request.name, std::nullopt);
    EXPECT_EQ(request.at, std::nullopt);
}

// {"id":42,"name":"...","at":1732100000000} and a line feed: 39 characters round the name.
TEST(ReadEditRequest, takesWhatIsWholeInALineCutBehindTheName) {
    const auto cutBy = [](std::size_t bytes) {
        const std::string name(599 - 39 + bytes, 'n');
        const std::string line = tw_effect::editRequestLine(42, name, kTime);
        EXPECT_EQ(line.size(), 599u);
        const EditRequest request = readEditRequest(line);
        EXPECT_EQ(request.name.value_or("").size(), name.size());
        return request;
    };
    EXPECT_EQ(cutBy(0).state, RequestState::kWhole);
    EXPECT_EQ(cutBy(1).state, RequestState::kCut);
    EXPECT_EQ(cutBy(1).at, kTime);
    EXPECT_EQ(cutBy(2).at, std::nullopt);  // the brace is lost: the number may be too
    EXPECT_EQ(cutBy(5).at, std::nullopt);
    EXPECT_EQ(cutBy(20).state, RequestState::kCut);
}

TEST(ReadEditRequest, takesWhatIsWholeInALine_cutBehindASign) {
    const std::string name(599 - 17 - 7 - 1, 'n');
    const std::string line = tw_effect::editRequestLine(42, name, -kTime);
    ASSERT_TRUE(line.ends_with("\"at\":-"));
    const EditRequest request = readEditRequest(line);
    EXPECT_EQ(request.state, RequestState::kCut);
    EXPECT_EQ(request.id, 42);
    EXPECT_EQ(request.name, name);
    EXPECT_EQ(request.at, std::nullopt);
}

TEST(ReadEditRequest, passesOverWhatIsNoRequest) {
    expectForeign("older\n");
    expectForeign("{}");
    expectForeign("[1,2]\n");
    expectForeign("{\"id\":\"42\",\"name\":\"x\",\"at\":1}\n");
    expectForeign("{\"id\":0,\"name\":\"x\",\"at\":1}\n");
    expectForeign("{\"id\":-5,\"name\":\"x\",\"at\":1}\n");
    expectForeign("{\"id\":99999999999999999999,\"name\":\"x\",\"at\":1}\n");
    expectForeign("{\"id\":4.5,\"name\":\"x\",\"at\":1}\n");
    expectForeign("{\"id\":42,\"at\":1,\"name\":\"x\"}\n");
    expectForeign("{\"id\":42,\"name\":\"x\",\"at\":1}\nmore");
    expectForeign("{\"id\":42,\"name\":\"x\",\"at\":now}\n");
    expectForeign(std::string(599, 'x'));
}

TEST(ReadEditRequest, passesOverAnEndlessName) {
    expectForeign("{\"id\":42,\"name\":\"" + std::string(1000, 'x'));
}

}  // namespace
