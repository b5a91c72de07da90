#include <cstdlib>
#include <string>
#include <thread>

#include "tests/effect/lut_button_fixture.h"
#include "tests/support/failing_calls.h"

namespace {

using twtest::Alerts;
using twtest::cube;
using twtest::kLut;
using twtest::kLutButton;
using twtest::kPressed;
using twtest::kRefresh;
using twtest::Lines;
using twtest::LutButton;
using twtest::widened;

// ---- The dialog

TEST_F(LutButton, changesNothing_whenCancelled) {
    expectUnchanged(effect().press(kLutButton));
    EXPECT_EQ(log(), (Lines{kPressed, dialogLine(), "LUT button: cancelled"}));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

TEST_F(LutButton, opensTheDialogInTheFolderThatThePanelChose) {
    const std::string folder = path("LUTs été");
    write("LUTs été/x.cube", "");
    write("Library/Application Support/Tintwell/lut-folder.txt", folder + "\r\n");
    effect().press(kLutButton);
    EXPECT_EQ(dialogs().folders, Lines{folder});
    EXPECT_EQ(log()[1], "LUT button: dialog in \"" + folder + "\"");
}

TEST_F(LutButton, opensTheDialogAnywhere_withoutAHome) {
    unsetenv("HOME");
    EXPECT_EQ(effect().press(kLutButton).error, PF_Err_NONE);
    EXPECT_EQ(dialogs().folders, Lines{""});
}

// ---- Files that are refused

TEST_F(LutButton, refusesAFile_thatCannotBeOpened) {
    expectUnreadable(path("no.cube"), "");
}

TEST_F(LutButton, refusesAnEmptyFile) {
    expectUnreadable(write("empty.cube", ""), "");
}

TEST_F(LutButton, refusesAFolder) {
    write("folder.cube/x", "");
    expectUnreadable(path("folder.cube"), "");
}

TEST_F(LutButton, refusesAFile_thatDoesNotParse) {
    expectUnreadable(write("1d.cube", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n"),
                     "1D LUTs are not supported");
}

TEST_F(LutButton, refusesAFile_thatCannotBeReadToItsEnd) {
    // Its first 64 KiB end with a line.
    const std::string file = write("long.cube", cube(30, "\n"));
    twtest::watchCallsOf(host->module().symbol("EffectMain"));
    const twtest::Watch watch;
    twtest::failCall(twtest::LibraryCall::kRead, 2);
    expectUnreadable(file, "wrong number of values");
}

TEST_F(LutButton, namesARefusedFileByItsSystemPath) {
    // "é" in two code points, as file systems that decompose names give it, quotes, and an emoji.
    expectUnreadable(write("e\xCC\x81 \"q\" \xF0\x9F\x8E\xA8.cube", ""), "");
}

TEST_F(LutButton, refusesADomainALittleAboveOne) {
    expectForeignDomain("DOMAIN_MAX 1 1 1.0001\n");
}

TEST_F(LutButton, refusesADomainThatDoesNotStartAtZero) {
    expectForeignDomain("DOMAIN_MIN 0 -0.5 0\n");
}

// ---- No memory

TEST_F(LutButton, reportsOutOfMemory_whenThereIsNoNewHandle) {
    effect().setNull(kLut);
    host->refusals().fail(host_sim::Refusal::kAllocation, 1);
    const auto result = pickFile(write("x.cube", cube(2)));
    EXPECT_EQ(result.error, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(result.changed, std::vector<int>());
    EXPECT_EQ(result.out.out_flags, 0);
    EXPECT_EQ(effect().arbitrary(kLut), nullptr);
    EXPECT_EQ(log(), (Lines{kPressed, dialogLine()}));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

TEST_F(LutButton, reportsOutOfMemory_whenTheResizeFails) {
    host->refusals().fail(host_sim::Refusal::kResize, 1);
    expectUnchanged(pickFile(write("x.cube", cube(2))), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(log(), (Lines{kPressed, dialogLine()}));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

// ---- Files that are taken

TEST_F(LutButton, storesTheFileAndTellsTheHostAndTheLog) {
    const std::string text = cube(3);
    expectLoaded("Film.cube", text, 0, "Film");
    const std::size_t bytes = expectedBytes(text, 0, "Film").size();
    EXPECT_EQ(log(), (Lines{kPressed, dialogLine(),
                            "LUT button: loaded " + path("Film.cube") + " (3^3, " +
                                std::to_string(bytes) + " bytes)",
                            "LUT button: label \"Film.cube\" (picked) -> err 0",
                            "LUT button: label \"Film.cube\" (update) -> err 0"}));
    EXPECT_EQ(label(), "Film.cube");
}

TEST_F(LutButton, keepsTheFlagsThatTheHostHadSet) {
    host->outPreset().out_flags = 0x11;
    const auto result = pickFile(write("x.cube", cube(2)));
    EXPECT_EQ(result.out.out_flags, kRefresh | 0x11);
}

TEST_F(LutButton, setsTheChangeFlagAlone) {
    for (const bool empty : {false, true}) {
        if (empty) effect().setNull(kLut);
        expectLoaded("x.cube", cube(2), 0, "x");
    }
    EXPECT_EQ(host->problems(), Lines());
}

TEST_F(LutButton, givesAnEmptyParameterAHandle) {
    effect().setNull(kLut);
    expectLoaded("x.cube", cube(2), 0, "x");
}

TEST_F(LutButton, resizesTheHandleThatIsThere) {
    const PF_Handle before = effect().arbitrary(kLut);
    expectLoaded("large.cube", cube(9), 0, "large");
    expectLoaded("small.cube", cube(2), 0, "small");
    EXPECT_EQ(effect().arbitrary(kLut), before);
}

TEST_F(LutButton, storesIntoTheNewHandle_whenTheResizeReplacesIt) {
    const PF_Handle before = effect().arbitrary(kLut);
    host->refusals().replaceHandleOnResize(true);
    expectLoaded("x.cube", cube(2), 0, "x");
    EXPECT_NE(effect().arbitrary(kLut), before);
}

TEST_F(LutButton, handsOverTheHandle_whenItCannotBeLocked) {
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    const auto result = pickFile(write("x.cube", cube(2)));
    EXPECT_EQ(result.error, PF_Err_NONE);
    EXPECT_EQ(result.changed, std::vector<int>{kLut});
    EXPECT_EQ(lutBytes().size(), expectedBytes(cube(2), 0, "x").size());
    EXPECT_EQ(host->handles().counts().unlocksAfterRefusal, 1u);
}

TEST_F(LutButton, takesAUnitDomain_thatIsWrittenOut) {
    expectLoaded("x.cube", cube(2, "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 1 1 1\n"), 0, "x");
}

TEST_F(LutButton, takesAFile_thatJustFillsTheBuffer) {
    for (const std::size_t bytes : {65535u, 65536u, 65537u, 131072u}) {
        SCOPED_TRACE(bytes);
        expectLoaded("x.cube", twtest::cubeOfBytes(3, bytes), 0, "x");
    }
}

TEST_F(LutButton, storesASizeBeyondWhatItReadsBack) {
    expectLoaded("big.cube", cube(130), 0, "big");
    EXPECT_EQ(label(), "Choose a LUT");
    // The reader logs when it decodes: push the label's record out of the cache.
    host_sim::Instance& other = host->apply();
    for (int size = 2; size < 10; ++size) {
        other.setBytes(kLut, widened("TWLUTP " + std::to_string(size)));
        other.updateUi();
    }
    log();
    host_sim::Frame in(host->format(8), 4, 2), out(host->format(8), 4, 2);
    in.setPixel8(1, 1, {10, 20, 30, 40});
    EXPECT_EQ(effect().render(in, out).error, PF_Err_NONE);
    EXPECT_EQ(out.pixelBytes(), in.pixelBytes());
    EXPECT_EQ(log().front(), "Embedded LUT: LUT size out of range");
}

// ---- The match id

TEST_F(LutButton, keepsAMatchId_fromTheMiddleOfTheFile) {
    expectLoaded("x.cube", "TITLE \"x\"\n# Tintwell match 42\n" + cube(2), 42, "x");
}

TEST_F(LutButton, keepsAMatchId_fromTheEndOfTheFile) {
    expectLoaded("x.cube", cube(2) + "# Tintwell match 42", 42, "x");
}

TEST_F(LutButton, ignoresAMatchId_withoutDigits) {
    expectLoaded("x.cube", "# Tintwell match x\n" + cube(2), 0, "x");
}

TEST_F(LutButton, takesTheFirstOfSeveralMatchIds) {
    expectLoaded("x.cube", "# Tintwell match  7\n# Tintwell match 8\n" + cube(2), 7, "x");
}

// ---- The name

TEST_F(LutButton, namesTheLutAfterTheFile_withoutItsLastExtension) {
    expectLoaded("My LUT.final.cube", cube(2), 0, "My LUT.final");
    EXPECT_EQ(label(), "My LUT.final.cube");
}

TEST_F(LutButton, takesAWholeName_withoutExtension) {
    expectLoaded("folder.d/README", cube(2), 0, "README");
}

TEST_F(LutButton, findsNoNameInABareExtension) {
    expectLoaded(".cube", cube(2), 0, "");
    EXPECT_EQ(label(), "From Tintwell (Apply again to name it)");
}

TEST_F(LutButton, cutsTheFolderAtABackslashToo) {
    expectLoaded("a\\b.cube", cube(2), 0, "b");
}

TEST_F(LutButton, keepsANameOfAnyCharacters) {
    for (const std::string name : {"e\xCC\x81t\xC3\xA9", "\"quoted\" \\b\\", "two\nlines",
                                   "\xF0\x9F\x8E\xA8 100%", "tab\there"}) {
        SCOPED_TRACE(name);
        const std::string afterSlash = name.substr(name.find_last_of('\\') + 1);
        expectLoaded(name + ".cube", cube(2), 0, afterSlash);
        EXPECT_EQ(label(), afterSlash.empty() ? "From Tintwell (Apply again to name it)"
                                              : afterSlash + ".cube");
    }
}

// ---- Dispatch

TEST_F(LutButton, ignoresOtherIndices) {
    EXPECT_EQ(effect().press(1).error, PF_Err_NONE);
    EXPECT_EQ(effect().press(2).error, PF_Err_NONE);
    EXPECT_EQ(log(), (Lines{"USER_CHANGED_PARAM index 1", "USER_CHANGED_PARAM index 2"}));
    EXPECT_EQ(dialogs().folders, Lines());
}

TEST_F(LutButton, ignoresAPress_withoutARecord) {
    expectUnchanged(effect().pressWithoutRecord());
    EXPECT_EQ(log(), Lines{"USER_CHANGED_PARAM index -1"});
}

// ---- Beside renders

TEST_F(LutButton, works_whileOtherThreadsRenderAndUpdate) {
    const std::string files[] = {write("a.cube", cube(9)), write("b.cube", cube(17))};
    host_sim::Instance& other = host->apply();
    const auto busy = [&](host_sim::Instance& instance) {
        host_sim::Frame in(host->format(32), 64, 36), out(host->format(32), 64, 36);
        for (int frame = 0; frame < 20; ++frame) {
            EXPECT_EQ(instance.render(in, out).error, PF_Err_NONE);
            EXPECT_EQ(instance.updateUi().error, PF_Err_NONE);
        }
    };
    std::thread first([&] { busy(effect()); });
    std::thread second([&] { busy(other); });
    for (int press = 0; press < 10; ++press) {
        EXPECT_EQ(pickFile(files[press % 2]).error, PF_Err_NONE);
    }
    first.join();
    second.join();
    EXPECT_EQ(label(), "b.cube");
    EXPECT_EQ(other.label(kLutButton), "Choose a LUT");
}

}  // namespace
