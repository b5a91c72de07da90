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
using twtest::stored;

// ---- The dialog

TEST_F(LutButton, changes_nothing_when_cancelled) {
    expectUnchanged(effect().press(kLutButton));
    EXPECT_EQ(log(), (Lines{kPressed, dialogLine(), "LUT button: cancelled"}));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

TEST_F(LutButton, opens_the_dialog_in_the_folder_that_the_panel_chose) {
    const std::string folder = path("LUTs été");
    write("LUTs été/x.cube", "");
    write("Library/Application Support/Tintwell/lut-folder.txt", folder + "\r\n");
    effect().press(kLutButton);
    EXPECT_EQ(dialogs().folders, Lines{folder});
    EXPECT_EQ(log()[1], "LUT button: dialog in \"" + folder + "\"");
}

TEST_F(LutButton, opens_the_dialog_anywhere_without_a_home) {
    unsetenv("HOME");
    EXPECT_EQ(effect().press(kLutButton).error, PF_Err_NONE);
    EXPECT_EQ(dialogs().folders, Lines{""});
}

// ---- Files that are refused

TEST_F(LutButton, refuses_a_file_that_cannot_be_opened) {
    expectUnreadable(path("no.cube"), "");
}

TEST_F(LutButton, refuses_an_empty_file) {
    expectUnreadable(write("empty.cube", ""), "");
}

TEST_F(LutButton, refuses_a_folder) {
    write("folder.cube/x", "");
    expectUnreadable(path("folder.cube"), "");
}

TEST_F(LutButton, refuses_a_file_that_does_not_parse) {
    expectUnreadable(write("1d.cube", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n"),
                     "1D LUTs are not supported");
}

TEST_F(LutButton, refuses_a_file_that_cannot_be_read_to_its_end) {
    // Its first 64 KiB end with a line.
    const std::string file = write("long.cube", cube(30, "\n"));
    twtest::watchCallsOf(host().module().symbol("EffectMain"));
    const twtest::Watch watch;
    twtest::failCall(twtest::LibraryCall::kRead, 2);
    expectUnreadable(file, "wrong number of values");
}

TEST_F(LutButton, names_a_refused_file_as_the_system_spells_it) {
    // "é" in two code points, as file systems that decompose names give it, and more oddities.
    expectUnreadable(write("e\xCC\x81 \"q\" \xF0\x9F\x8E\xA8.cube", ""), "");
}

TEST_F(LutButton, refuses_a_domain_a_little_above_one) {
    expectForeignDomain("DOMAIN_MAX 1 1 1.0001\n");
}

TEST_F(LutButton, refuses_a_domain_that_begins_elsewhere) {
    expectForeignDomain("DOMAIN_MIN 0 -0.5 0\n");
}

// ---- No memory

TEST_F(LutButton, reports_out_of_memory_when_there_is_no_new_handle) {
    effect().setNull(kLut);
    host().refusals().fail(host_sim::Refusal::kAllocation, 1);
    const auto result = pickFile(write("x.cube", cube(2)));
    EXPECT_EQ(result.error, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(result.changed, std::vector<int>());
    EXPECT_EQ(result.out.out_flags, 0);
    EXPECT_EQ(effect().arbitrary(kLut), nullptr);
    EXPECT_EQ(log(), (Lines{kPressed, dialogLine()}));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

TEST_F(LutButton, reports_out_of_memory_when_the_resize_fails) {
    host().refusals().fail(host_sim::Refusal::kResize, 1);
    expectUnchanged(pickFile(write("x.cube", cube(2))), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(log(), (Lines{kPressed, dialogLine()}));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

// ---- Files that are taken

TEST_F(LutButton, stores_the_file_and_tells_the_host_and_the_log) {
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

TEST_F(LutButton, keeps_the_flags_that_the_host_had_set) {
    host().outPreset().out_flags = 0x11;
    const auto result = pickFile(write("x.cube", cube(2)));
    EXPECT_EQ(result.out.out_flags, kRefresh | 0x11);
}

TEST_F(LutButton, flags_the_value_as_changed_and_as_nothing_else) {
    for (const bool empty : {false, true}) {
        if (empty) effect().setNull(kLut);
        expectLoaded("x.cube", cube(2), 0, "x");
    }
    EXPECT_EQ(host().problems(), Lines());
}

TEST_F(LutButton, gives_an_empty_parameter_a_handle) {
    effect().setNull(kLut);
    expectLoaded("x.cube", cube(2), 0, "x");
}

TEST_F(LutButton, resizes_the_handle_that_is_there) {
    const PF_Handle before = effect().arbitrary(kLut);
    expectLoaded("large.cube", cube(9), 0, "large");
    expectLoaded("small.cube", cube(2), 0, "small");
    EXPECT_EQ(effect().arbitrary(kLut), before);
}

TEST_F(LutButton, follows_a_handle_that_is_replaced_by_the_resize) {
    const PF_Handle before = effect().arbitrary(kLut);
    host().refusals().replaceHandleOnResize(true);
    expectLoaded("x.cube", cube(2), 0, "x");
    EXPECT_NE(effect().arbitrary(kLut), before);
}

TEST_F(LutButton, hands_over_a_handle_that_cannot_be_locked) {
    host().refusals().fail(host_sim::Refusal::kLock, 1);
    const auto result = pickFile(write("x.cube", cube(2)));
    EXPECT_EQ(result.error, PF_Err_NONE);
    EXPECT_EQ(result.changed, std::vector<int>{kLut});
    EXPECT_EQ(lutBytes().size(), expectedBytes(cube(2), 0, "x").size());
    EXPECT_EQ(host().handles().counts().unlocksAfterRefusal, 1u);
}

TEST_F(LutButton, takes_a_unit_domain_that_is_written_out) {
    expectLoaded("x.cube", cube(2, "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 1 1 1\n"), 0, "x");
}

TEST_F(LutButton, takes_a_file_that_just_fills_the_buffer) {
    for (const std::size_t bytes : {65535u, 65536u, 65537u, 131072u}) {
        SCOPED_TRACE(bytes);
        expectLoaded("x.cube", twtest::cubeOfBytes(3, bytes), 0, "x");
    }
}

TEST_F(LutButton, stores_a_size_beyond_what_it_reads_back) {
    expectLoaded("big.cube", cube(130), 0, "big");
    EXPECT_EQ(label(), "Choose a LUT");
    // The reader's complaint comes with the decode: let the label's be forgotten.
    host_sim::Instance& other = host().apply();
    for (int size = 2; size < 10; ++size) {
        other.setBytes(kLut, stored("TWLUTP " + std::to_string(size)));
        other.updateUi();
    }
    log();
    host_sim::Frame in(host().format(8), 4, 2), out(host().format(8), 4, 2);
    in.setPixel8(1, 1, {10, 20, 30, 40});
    EXPECT_EQ(effect().render(in, out).error, PF_Err_NONE);
    EXPECT_EQ(out.pixelBytes(), in.pixelBytes());
    EXPECT_EQ(log().front(), "Embedded LUT: LUT size out of range");
}

// ---- The match id

TEST_F(LutButton, keeps_a_match_id_from_the_middle_of_the_file) {
    expectLoaded("x.cube", "TITLE \"x\"\n# Tintwell match 42\n" + cube(2), 42, "x");
}

TEST_F(LutButton, keeps_a_match_id_from_the_end_of_the_file) {
    expectLoaded("x.cube", cube(2) + "# Tintwell match 42", 42, "x");
}

TEST_F(LutButton, reads_a_match_id_without_digits_as_none) {
    expectLoaded("x.cube", "# Tintwell match x\n" + cube(2), 0, "x");
}

TEST_F(LutButton, takes_the_first_of_several_match_ids) {
    expectLoaded("x.cube", "# Tintwell match  7\n# Tintwell match 8\n" + cube(2), 7, "x");
}

// ---- The name

TEST_F(LutButton, names_the_lut_after_the_file_without_its_last_extension) {
    expectLoaded("My LUT.final.cube", cube(2), 0, "My LUT.final");
    EXPECT_EQ(label(), "My LUT.final.cube");
}

TEST_F(LutButton, takes_a_name_without_extension_whole) {
    expectLoaded("folder.d/README", cube(2), 0, "README");
}

TEST_F(LutButton, finds_no_name_in_a_bare_extension) {
    expectLoaded(".cube", cube(2), 0, "");
    EXPECT_EQ(label(), "From Tintwell (Apply again to name it)");
}

TEST_F(LutButton, cuts_the_folder_at_a_backslash_too) {
    expectLoaded("a\\b.cube", cube(2), 0, "b");
}

TEST_F(LutButton, keeps_a_name_of_any_characters) {
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

TEST_F(LutButton, is_not_meant_by_other_indices) {
    EXPECT_EQ(effect().press(1).error, PF_Err_NONE);
    EXPECT_EQ(effect().press(2).error, PF_Err_NONE);
    EXPECT_EQ(log(), (Lines{"USER_CHANGED_PARAM index 1", "USER_CHANGED_PARAM index 2"}));
    EXPECT_EQ(dialogs().folders, Lines());
}

TEST_F(LutButton, is_not_meant_without_a_record) {
    expectUnchanged(effect().pressWithoutRecord());
    EXPECT_EQ(log(), Lines{"USER_CHANGED_PARAM index -1"});
}

// ---- Beside renders

TEST_F(LutButton, works_while_other_threads_render_and_update) {
    const std::string files[] = {write("a.cube", cube(9)), write("b.cube", cube(17))};
    host_sim::Instance& other = host().apply();
    const auto busy = [&](host_sim::Instance& instance) {
        host_sim::Frame in(host().format(32), 64, 36), out(host().format(32), 64, 36);
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
