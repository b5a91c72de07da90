// Selectors that turn values into text and back: PRINT_SIZE, PRINT and SCAN.
#include "tests/effect/arbitrary_fixture.h"

namespace twtest {
namespace {

using ArbitraryPrintSize = ArbitraryTest;
using ArbitraryScan = ArbitraryTest;

class ArbitraryPrint : public ArbitraryTest {
protected:
    // Prints into the first `size` bytes of ten.
    std::string printedInto(PF_ArbitraryH value, A_u_long size, PF_ArbPrintFlags flags = 0) {
        std::string buffer(10, '#');
        PF_ArbParamsExtra extra = {};
        extra.which_function = PF_Arbitrary_PRINT_FUNC;
        extra.u.print_func_params = {nullptr, flags, value, size, buffer.data()};
        EXPECT_EQ(calls().raw(extra), 0);
        return buffer;
    }
};

TEST_F(ArbitraryPrintSize, hasRoomForTextAndTerminator) {
    EXPECT_EQ(calls().printSize(holding("TWLUT0")).value, 7U);
    EXPECT_EQ(calls().printSize(holding(bytesOf("TWLUT0"))).value, 7U);
    EXPECT_EQ(calls().printSize(holding(rotationText())).value, rotationText().size() + 1);
}

TEST_F(ArbitraryPrintSize, isOne_whenThereIsNoText) {
    Bytes highByte = widened("TWLUT0");
    highByte.back() = 1;
    EXPECT_EQ(calls().printSize(nullptr).value, 1U);
    EXPECT_EQ(calls().printSize(holding(Bytes())).value, 1U);
    EXPECT_EQ(calls().printSize(holding(bigEndian("TWLUT0"))).value, 1U);
    EXPECT_EQ(calls().printSize(holding(bytesOf("foreign data"))).value, 1U);
    EXPECT_EQ(calls().printSize(holding(highByte)).value, 1U);
}

TEST_F(ArbitraryPrintSize, isOne_whenTheValueCannotBeLocked) {
    const PF_ArbitraryH value = holding("TWLUT0");
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    const auto size = calls().printSize(value);
    EXPECT_EQ(size.error, 0);
    EXPECT_EQ(size.value, 1U);
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryPrint, givesTheText_inEitherForm) {
    EXPECT_EQ(calls().print(holding(emptyLut())).value, "TWLUT0");
    EXPECT_EQ(calls().print(holding(rotationText())).value, rotationText());
    EXPECT_EQ(calls().print(holding(bytesOf(rotationText()))).value, rotationText());
}

TEST_F(ArbitraryPrint, givesNoText_whenTheValueHoldsNone) {
    EXPECT_EQ(calls().print(nullptr).value, "");
    EXPECT_EQ(printedInto(nullptr, 10), std::string("\0#########", 10));
    EXPECT_EQ(printedInto(holding(bigEndian("TWLUT0")), 10), std::string("\0#########", 10));
}

TEST_F(ArbitraryPrint, writesTextAndTerminatorOnly_whenTheBufferIsLarger) {
    EXPECT_EQ(printedInto(holding("TWLUT0"), 10), std::string("TWLUT0\0###", 10));
}

TEST_F(ArbitraryPrint, cutsTheText_whenTheBufferIsSmaller) {
    const PF_ArbitraryH value = holding("TWLUT0");
    EXPECT_EQ(printedInto(value, 7), std::string("TWLUT0\0###", 10));
    EXPECT_EQ(printedInto(value, 6), std::string("TWLUT\0####", 10));
    EXPECT_EQ(printedInto(value, 1), std::string("\0#########", 10));
}

TEST_F(ArbitraryPrint, writesNothing_whenTheBufferHasNoBytes) {
    EXPECT_EQ(printedInto(holding("TWLUT0"), 0), "##########");
}

TEST_F(ArbitraryPrint, returnsZero_whenThereIsNoBuffer) {
    PF_ArbParamsExtra extra = {};
    extra.which_function = PF_Arbitrary_PRINT_FUNC;
    extra.u.print_func_params = {nullptr, 0, holding("TWLUT0"), 10, nullptr};
    EXPECT_EQ(calls().raw(extra), 0);
}

TEST_F(ArbitraryPrint, takesNoNoticeOfFlags) {
    EXPECT_EQ(printedInto(holding("TWLUT0"), 10, 1), std::string("TWLUT0\0###", 10));
}

TEST_F(ArbitraryPrint, writesTheTerminator_whenTheValueCannotBeLocked) {
    const PF_ArbitraryH value = holding("TWLUT0");
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(printedInto(value, 10), std::string("\0#########", 10));
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryScan, storesTheTextItself_whenItCanBeRead) {
    for (const std::string& text :
         {std::string("TWLUT0"), std::string("TWLUT0 and more \xE9\xFF"), std::string("TWLUTP 17"),
          rotationText(), rotationText() + "  surplus", "TWLUT2 9 2 0 1 " + std::string(64, 'A'),
          "TWLUT1 2 0 1 " + std::string(64, '/'), std::string("TWLUTP 9\0behind a zero", 22)}) {
        EXPECT_EQ(contents(calls().scan(text)), widened(text)) << text;
    }
    EXPECT_EQ(newLogLines(), Lines(8, "Arb SCAN"));
}

TEST_F(ArbitraryScan, readsAsManyBytesAsTold_whenMoreFollow) {
    PF_ArbitraryH made = nullptr;
    PF_ArbParamsExtra extra = {};
    extra.which_function = PF_Arbitrary_SCAN_FUNC;
    extra.u.scan_func_params = {nullptr, "TWLUTP 648", 9, &made};
    const PF_Err error = calls().raw(extra);
    EXPECT_EQ(contents({error, made}), widened("TWLUTP 64"));
}

struct Unreadable {
    std::string text;
    const char* line;
};

std::vector<Unreadable> unreadableTexts() {
    return {{"TWLUTP 1", "  scan 8 bytes failed: bad calibration pattern size"},
            {"TWLUTP 65", "  scan 9 bytes failed: bad calibration pattern size"},
            {"TWLUT3 nonsense",
             "  scan 15 bytes failed: not a Tintwell LUT "
             "(expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)"},
            {"some other text",
             "  scan 15 bytes failed: not a Tintwell LUT "
             "(expected TWLUT2 <id> <size> <lo> <hi> <data>)"},
            {"",
             "  scan 0 bytes failed: not a Tintwell LUT "
             "(expected TWLUT2 <id> <size> <lo> <hi> <data>)"},
            {"TWLUT3 0 - 130 0 1 ", "  scan 19 bytes failed: LUT size out of range"},
            {"TWLUT3 0 - 2 0 1 " + std::string(63, 'A'),
             "  scan 80 bytes failed: LUT data is truncated"}};
}

TEST_F(ArbitraryScan, refusesAndSaysWhy_whenTheTextCannotBeRead) {
    for (const Unreadable& row : unreadableTexts()) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(calls().scan(row.text).error, 518);
        EXPECT_EQ(newLogLines(), Lines({"Arb SCAN", row.line}));
    }
    EXPECT_EQ(counts().allocations, 1U);  // the parameter's default
}

TEST_F(ArbitraryScan, leavesTheOutputUnwritten_whenItRefuses) {
    PF_ArbitraryH untouched = holding("TWLUTP 9");
    const PF_ArbitraryH before = untouched;
    PF_ArbParamsExtra extra = {};
    extra.which_function = PF_Arbitrary_SCAN_FUNC;
    extra.u.scan_func_params = {nullptr, "TWLUTP 1", 8, &untouched};
    EXPECT_EQ(calls().raw(extra), 518);
    EXPECT_EQ(untouched, before);
    EXPECT_TRUE(host->handles().isLive(before));
}

TEST_F(ArbitraryScan, leavesTheParameterAsItWas_whenItRefuses) {
    host_sim::Instance& effect = host->apply();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    EXPECT_EQ(effect.scan(kLut, "TWLUTP 65"), 518);
    EXPECT_EQ(host->handles().contents(effect.arbitrary(kLut)), widened(rotationText()));
}

TEST_F(ArbitraryScan, isNullWithoutError_whenTheHostHasNoMemory) {
    host->refusals().fail(host_sim::Refusal::kAllocation, 1);
    const auto made = calls().scan("TWLUT0");
    EXPECT_EQ(made.error, 0);
    EXPECT_EQ(made.value, nullptr);
}

TEST_F(ArbitraryScan, isUnfilled_whenTheNewValueCannotBeLocked) {
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(contents(calls().scan("TWLUTP 20")), unfilled(18));
    EXPECT_EQ(counts().unlocksAfterRefusal, 1U);
}

TEST_F(ArbitraryScan, givesWhatPrintGave) {
    const std::string printed = calls().print(holding(bytesOf(rotationText()))).value;
    EXPECT_EQ(contents(calls().scan(printed)), widened(rotationText()));
}

}  // namespace
}  // namespace twtest
