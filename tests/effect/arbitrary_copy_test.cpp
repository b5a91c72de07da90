// Selectors that make and end values: NEW, DISPOSE, COPY and INTERP.
#include "tests/effect/arbitrary_fixture.h"

namespace twtest {
namespace {

using ArbitraryNew = ArbitraryTest;
using ArbitraryDispose = ArbitraryTest;
using ArbitraryCopy = ArbitraryTest;
using ArbitraryInterp = ArbitraryTest;

TEST_F(ArbitraryNew, holdsNoLut_whenTheHostHasMemory) {
    EXPECT_EQ(contents(calls().create()), emptyLut());
    EXPECT_EQ(emptyLut().size(), 12U);
}

TEST_F(ArbitraryNew, isNullWithoutError_whenTheHostHasNoMemory) {
    host->refusals().fail(host_sim::Refusal::kAllocation, 1);
    const auto made = calls().create();
    EXPECT_EQ(made.error, 0);
    EXPECT_EQ(made.value, nullptr);
}

TEST_F(ArbitraryNew, isUnfilledAndUnlocked_whenItCannotBeLocked) {
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(contents(calls().create()), unfilled(12));
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryDispose, freesTheValue_whenThereIsOne) {
    const auto made = calls().create();
    const std::size_t before = counts().live;
    EXPECT_EQ(calls().dispose(made.value), 0);
    EXPECT_EQ(counts().live, before - 1);
    EXPECT_FALSE(host->handles().isLive(made.value));
}

TEST_F(ArbitraryDispose, asksTheHostForNothing_whenTheHandleIsNull) {
    const std::size_t before = counts().disposals;
    EXPECT_EQ(calls().dispose(nullptr), 0);
    EXPECT_EQ(counts().disposals, before);
}

TEST_F(ArbitraryCopy, holdsNoLut_whenTheSourceIsNull) {
    EXPECT_EQ(contents(calls().copy(nullptr)), emptyLut());
}

TEST_F(ArbitraryCopy, holdsTheSameBytes_whenTheSourceIsALut) {
    const PF_ArbitraryH source = holding(rotationText());
    const auto made = calls().copy(source);
    EXPECT_NE(made.value, source);
    EXPECT_EQ(contents(made), widened(rotationText()));
}

TEST_F(ArbitraryCopy, keepsEightBitText_whenTheSourceHoldsSuch) {
    const Bytes text = bytesOf(rotationText());
    EXPECT_EQ(contents(calls().copy(holding(text))), text);
}

TEST_F(ArbitraryCopy, looksAtTheFirstFiveCharactersOnly) {
    const Bytes narrow = bytesOf(
        "TWLUT\x01\xFF"
        "abc");
    EXPECT_EQ(contents(calls().copy(holding(narrow))), narrow);
    Bytes wide = widened("TWLUT");
    EXPECT_EQ(contents(calls().copy(holding(wide))), wide);
    wide.insert(wide.end(), {0xFF, 0xFF, 0xFF});
    EXPECT_EQ(contents(calls().copy(holding(wide))), wide);
}

struct Foreign {
    const char* what;
    Bytes bytes;
};

std::vector<Foreign> foreignValues() {
    Bytes highByte = widened("TWLUT0");
    highByte[9] = 1;
    return {{"no bytes", {}},
            {"another text", widened("PLAIN0")},
            {"lower case", widened("twlut0")},
            {"four of the five characters in 8 bits", bytesOf("TWLUX text")},
            {"four of the five characters in 16 bits", widened("TWLUX text")},
            {"big-endian units", bigEndian("TWLUT0")},
            {"8-bit text of 9 bytes", bytesOf("TWLUT0   ")},
            {"16-bit text of 9 bytes", {'T', 0, 'W', 0, 'L', 0, 'U', 0, 'T'}},
            {"a fifth unit above 0xFF", highByte},
            {"zero bytes", Bytes(40, 0)}};
}

TEST_F(ArbitraryCopy, holdsNoLut_whenTheSourceIsForeign) {
    for (const Foreign& foreign : foreignValues()) {
        SCOPED_TRACE(foreign.what);
        const PF_ArbitraryH source = holding(foreign.bytes);
        EXPECT_EQ(contents(calls().copy(source)), emptyLut());
        EXPECT_EQ(host->handles().contents(source), foreign.bytes);
    }
}

TEST_F(ArbitraryCopy, holdsNoLut_whenTheSourceCannotBeLocked) {
    const PF_ArbitraryH source = holding(rotationText());
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(contents(calls().copy(source)), emptyLut());
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryCopy, isUnfilled_whenTheCopyCannotBeLocked) {
    const PF_ArbitraryH source = holding(rotationText());
    host->refusals().fail(host_sim::Refusal::kLock, 2);
    EXPECT_EQ(contents(calls().copy(source)), unfilled(widened(rotationText()).size()));
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryCopy, isNullWithoutError_whenTheHostHasNoMemory) {
    host->refusals().fail(host_sim::Refusal::kAllocation, host_sim::kEveryCall);
    for (const PF_ArbitraryH source :
         {PF_ArbitraryH{nullptr}, holding(rotationText()), holding(widened("foreign data"))}) {
        const auto made = calls().copy(source);
        EXPECT_EQ(made.error, 0);
        EXPECT_EQ(made.value, nullptr);
    }
}

TEST_F(ArbitraryInterp, isTheEarlierValue_whateverTheFraction) {
    const PF_ArbitraryH left = holding(rotationText());
    const PF_ArbitraryH right = holding(quarterText());
    for (const double at : {0.0, 0.25, 0.999, 1.0, -1.0}) {
        EXPECT_EQ(contents(calls().interpolate(left, right, at)), widened(rotationText())) << at;
    }
}

TEST_F(ArbitraryInterp, holdsNoLut_whenTheEarlierValueIsNone) {
    const PF_ArbitraryH right = holding(rotationText());
    EXPECT_EQ(contents(calls().interpolate(nullptr, right, 1.0)), emptyLut());
    EXPECT_EQ(contents(calls().interpolate(nullptr, nullptr, 0.5)), emptyLut());
    EXPECT_EQ(contents(calls().interpolate(holding(bigEndian("TWLUT0")), right, 0.5)), emptyLut());
}

TEST_F(ArbitraryInterp, needsNoLaterValue) {
    const PF_ArbitraryH left = holding(rotationText());
    EXPECT_EQ(contents(calls().interpolate(left, nullptr, 1.0)), widened(rotationText()));
}

TEST_F(ArbitraryInterp, isNullWithoutError_whenTheHostHasNoMemory) {
    const PF_ArbitraryH left = holding(rotationText());
    host->refusals().fail(host_sim::Refusal::kAllocation, 1);
    const auto made = calls().interpolate(left, left, 0.5);
    EXPECT_EQ(made.error, 0);
    EXPECT_EQ(made.value, nullptr);
}

}  // namespace
}  // namespace twtest
