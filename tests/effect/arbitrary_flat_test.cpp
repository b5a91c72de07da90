// Selectors that save and load values, and compare them: FLAT_SIZE, FLATTEN, UNFLATTEN, COMPARE.
#include "tests/effect/arbitrary_fixture.h"

namespace twtest {
namespace {

using ArbitraryFlatSize = ArbitraryTest;
using ArbitraryFlatten = ArbitraryTest;
using ArbitraryUnflatten = ArbitraryTest;
using ArbitraryCompare = ArbitraryTest;

TEST_F(ArbitraryFlatSize, isTwelve_whenTheParameterIsFresh) {
    const host_sim::Instance& effect = host->apply();
    const auto size = effect.arbitraryCalls(kLut).flatSize(effect.arbitrary(kLut));
    EXPECT_EQ(size.error, 0);
    EXPECT_EQ(size.value, 12U);
}

TEST_F(ArbitraryFlatSize, isTheHandlesSize_whateverItHolds) {
    EXPECT_EQ(calls().flatSize(holding(bytesOf("seven b"))).value, 7U);
    EXPECT_EQ(calls().flatSize(holding(rotationText())).value, 2 * rotationText().size());
}

TEST_F(ArbitraryFlatSize, isZero_whenTheHandleIsNull) {
    const auto size = calls().flatSize(nullptr);
    EXPECT_EQ(size.error, 0);
    EXPECT_EQ(size.value, 0U);
}

TEST_F(ArbitraryFlatten, givesSixUnits_whenTheParameterIsFresh) {
    const Bytes sixUnits = {'T', 0, 'W', 0, 'L', 0, 'U', 0, 'T', 0, '0', 0};
    const host_sim::Instance& effect = host->apply();
    EXPECT_EQ(effect.arbitraryCalls(kLut).flatten(effect.arbitrary(kLut), 12U).value, sixUnits);
}

TEST_F(ArbitraryFlatten, givesTheBytesAsTheyAre_whateverTheyAre) {
    for (const Bytes& bytes : {bytesOf("foreign"), widened(rotationText()), bytesOf(rotationText()),
                               bigEndian("TWLUT0")}) {
        const auto flat = calls().flatten(holding(bytes));
        EXPECT_EQ(flat.error, 0);
        EXPECT_EQ(flat.value, bytes);
    }
}

TEST_F(ArbitraryFlatten, leavesTheBufferAlone_whenItIsOneByteTooSmall) {
    const auto flat = calls().flatten(holding(emptyLut()), 11U);
    EXPECT_EQ(flat.error, 0);
    EXPECT_EQ(flat.value, Bytes(11, kFreshBufferByte));
}

TEST_F(ArbitraryFlatten, leavesTheRestAlone_whenTheBufferIsLarger) {
    Bytes expected = emptyLut();
    expected.resize(20, kFreshBufferByte);
    EXPECT_EQ(calls().flatten(holding(emptyLut()), 20U).value, expected);
}

TEST_F(ArbitraryFlatten, leavesTheBufferAlone_whenTheHandleIsNull) {
    const auto flat = calls().flatten(nullptr, 16U);
    EXPECT_EQ(flat.error, 0);
    EXPECT_EQ(flat.value, Bytes(16, kFreshBufferByte));
}

TEST_F(ArbitraryFlatten, leavesTheBufferAlone_whenTheValueCannotBeLocked) {
    const PF_ArbitraryH value = holding(emptyLut());
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    const auto flat = calls().flatten(value, 12U);
    EXPECT_EQ(flat.error, 0);
    EXPECT_EQ(flat.value, Bytes(12, kFreshBufferByte));
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryFlatten, returnsZero_whenThereIsNoBuffer) {
    PF_ArbParamsExtra extra = {};
    extra.which_function = PF_Arbitrary_FLATTEN_FUNC;
    extra.u.flatten_func_params = {nullptr, holding(emptyLut()), 12, nullptr};
    EXPECT_EQ(calls().raw(extra), 0);
}

TEST_F(ArbitraryUnflatten, keepsTheBytes_whenTheyAreALut) {
    for (const Bytes& bytes :
         {widened(rotationText()), bytesOf(rotationText()), emptyLut(), widened("TWLUTP 17")}) {
        EXPECT_EQ(contents(calls().unflatten(bytes)), bytes);
    }
    EXPECT_EQ(newLogLines(), Lines(4, "Arb UNFLATTEN"));
}

TEST_F(ArbitraryUnflatten, acceptsTenBytesOfEightBitText) {
    const Bytes ten = bytesOf("TWLUT?!\x80\xFF.");
    ASSERT_EQ(ten.size(), 10U);
    EXPECT_EQ(contents(calls().unflatten(ten)), ten);
}

struct Refused {
    Bytes bytes;
    const char* line;
};

TEST_F(ArbitraryUnflatten, takesNoLutAndSaysSo_whenTheBytesAreForeign) {
    const std::vector<Refused> rows = {
        {bytesOf("TWLUT0   "), "Arb UNFLATTEN: 9 bytes are not TWLUT text, using none"},
        {bigEndian("TWLUT"), "Arb UNFLATTEN: 10 bytes are not TWLUT text, using none"},
        {bigEndian("TWLUT0"), "Arb UNFLATTEN: 12 bytes are not TWLUT text, using none"},
        {bytesOf("another effect's data"),
         "Arb UNFLATTEN: 21 bytes are not TWLUT text, using none"},
        {{}, "Arb UNFLATTEN: 0 bytes are not TWLUT text, using none"}};
    for (const Refused& row : rows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(contents(calls().unflatten(row.bytes)), emptyLut());
        EXPECT_EQ(newLogLines(), Lines({"Arb UNFLATTEN", row.line}));
    }
}

TEST_F(ArbitraryUnflatten, takesNoLut_whenThereAreNoBytesAtAll) {
    EXPECT_EQ(contents(calls().unflattenNull()), emptyLut());
    EXPECT_EQ(newLogLines(),
              Lines({"Arb UNFLATTEN", "Arb UNFLATTEN: 0 bytes are not TWLUT text, using none"}));
}

TEST_F(ArbitraryUnflatten, takesNoLut_whenThePointerIsNullButTheSizeIsNot) {
    PF_ArbitraryH made = nullptr;
    PF_ArbParamsExtra extra = {};
    extra.which_function = PF_Arbitrary_UNFLATTEN_FUNC;
    extra.u.unflatten_func_params = {nullptr, 4000000000U, nullptr, &made};
    const PF_Err error = calls().raw(extra);
    EXPECT_EQ(contents({error, made}), emptyLut());
    EXPECT_EQ(newLogLines()[1], "Arb UNFLATTEN: 4000000000 bytes are not TWLUT text, using none");
}

TEST_F(ArbitraryUnflatten, isNullWithoutError_whenTheHostHasNoMemory) {
    host->refusals().fail(host_sim::Refusal::kAllocation, host_sim::kEveryCall);
    for (const Bytes& bytes : {widened(rotationText()), bytesOf("foreign data")}) {
        const auto made = calls().unflatten(bytes);
        EXPECT_EQ(made.error, 0);
        EXPECT_EQ(made.value, nullptr);
    }
    EXPECT_EQ(newLogLines(), Lines({"Arb UNFLATTEN", "Arb UNFLATTEN",
                                    "Arb UNFLATTEN: 12 bytes are not TWLUT text, using none"}));
}

TEST_F(ArbitraryUnflatten, isUnfilled_whenTheNewValueCannotBeLocked) {
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(contents(calls().unflatten(widened("TWLUTP 4"))), unfilled(16));
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryCompare, isEqual_whenBothAreNull) {
    const auto result = calls().compare(nullptr, nullptr);
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.value, PF_ArbCompare_EQUAL);
}

TEST_F(ArbitraryCompare, isNotEqual_whenOneIsNull) {
    const PF_ArbitraryH none = holding(emptyLut());
    EXPECT_EQ(calls().compare(nullptr, none).value, PF_ArbCompare_NOT_EQUAL);
    EXPECT_EQ(calls().compare(none, nullptr).value, PF_ArbCompare_NOT_EQUAL);
}

TEST_F(ArbitraryCompare, isEqual_whenTheBytesAre) {
    const PF_ArbitraryH a = holding(rotationText());
    EXPECT_EQ(calls().compare(a, holding(rotationText())).value, PF_ArbCompare_EQUAL);
    EXPECT_EQ(calls().compare(a, a).value, PF_ArbCompare_EQUAL);
    EXPECT_EQ(calls().compare(holding(bytesOf("foreign")), holding(bytesOf("foreign"))).value,
              PF_ArbCompare_EQUAL);
}

TEST_F(ArbitraryCompare, isNotEqual_whenOneByteDiffers) {
    const Bytes whole = widened(rotationText());
    for (const std::size_t place : {std::size_t{0}, whole.size() / 2, whole.size() - 1}) {
        Bytes other = whole;
        other[place] = static_cast<std::uint8_t>(other[place] + 1);
        const PF_ArbitraryH a = holding(whole), b = holding(other);
        EXPECT_EQ(calls().compare(a, b).value, PF_ArbCompare_NOT_EQUAL) << place;
        EXPECT_EQ(calls().compare(b, a).value, PF_ArbCompare_NOT_EQUAL) << place;
    }
}

TEST_F(ArbitraryCompare, isNotEqual_whenTheSizesDiffer) {
    const PF_ArbitraryH a = holding("TWLUT0"), b = holding("TWLUT0 ");
    EXPECT_EQ(calls().compare(a, b).value, PF_ArbCompare_NOT_EQUAL);
    EXPECT_EQ(calls().compare(b, a).value, PF_ArbCompare_NOT_EQUAL);
}

TEST_F(ArbitraryCompare, isNotEqual_whenTheSameTextIsInEightAndInSixteenBits) {
    const PF_ArbitraryH narrow = holding(bytesOf(rotationText()));
    EXPECT_EQ(calls().compare(narrow, holding(rotationText())).value, PF_ArbCompare_NOT_EQUAL);
}

TEST_F(ArbitraryCompare, isNotEqual_whenEitherCannotBeLocked) {
    const PF_ArbitraryH a = holding("TWLUTP 5"), b = holding("TWLUTP 5");
    for (const int nth : {1, 2}) {
        host->refusals().fail(host_sim::Refusal::kLock, nth);
        const auto result = calls().compare(a, b);
        EXPECT_EQ(result.error, 0) << nth;
        EXPECT_EQ(result.value, PF_ArbCompare_NOT_EQUAL) << nth;
        EXPECT_EQ(counts().unlocksAfterRefusal, static_cast<std::size_t>(nth));
    }
    EXPECT_EQ(calls().compare(a, b).value, PF_ArbCompare_EQUAL);
}

// Hosts that move memory expect unlocks in the reverse order of the locks.
TEST_F(ArbitraryCompare, unlocksTheSecondValueFirst) {
    const PF_ArbitraryH a = holding("TWLUTP 5"), b = holding("TWLUTP 5");
    Lines held;  // which were locked, change by change
    host->watchCallbacks([&] {
        std::string now;
        if (host->handles().effectLocks(a) != 0) now += 'a';
        if (host->handles().effectLocks(b) != 0) now += 'b';
        if (held.empty() || held.back() != now) held.push_back(now);
    });
    EXPECT_EQ(calls().compare(a, b).value, PF_ArbCompare_EQUAL);
    host->watchCallbacks({});
    EXPECT_EQ(held, Lines({"", "a", "ab", "a"}));
}

}  // namespace
}  // namespace twtest
