#include "tests/environment/user_session.h"

#include <filesystem>

#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/support/frames.h"
#include "tests/support/request_line.h"
#include "tests/support/stand_in_module.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

namespace fs = std::filesystem;
using Alerts = std::vector<ShownAlert>;

constexpr long kMatch = 42;
constexpr double kAmountPercent = 50.1;

// The first line without its numbers, which other tests check.
constexpr char kSetup[] = "GlobalSetup";

// Points whose range has decimals.
constexpr char kPoints[] =
    "0.125 0.25 0.5\n1.5 0.25 0.5\n0.125 0.75 0.5\n1.5 0.75 0.5\n"
    "0.125 0.25 0.875\n1.5 0.25 0.875\n0.125 0.75 0.875\n1.5 0.75 0.875\n";

tw::Lut3D lutOf(const std::string& cubeText) {
    tw::Lut3D lut;
    EXPECT_TRUE(tw::parseCube(cubeText, lut, nullptr));
    return lut;
}

std::string contentsOf(const fs::directory_entry& entry) {
    if (entry.is_symlink()) return "-> " + fs::read_symlink(entry.path()).string();
    return entry.is_regular_file() ? readFile(entry.path()) : "";
}

}  // namespace

std::map<std::string, std::string> treeOf(const std::string& folder) {
    std::map<std::string, std::string> tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        tree[entry.path()] = contentsOf(entry);
    }
    return tree;
}

UserSession::UserSession()
    : cube_("# Tintwell match " + std::to_string(kMatch) + "\nLUT_3D_SIZE 2\n" + kPoints),
      text_(tw::toEmbeddedText(lutOf(cube_), kMatch, "Film")) {
    writeFile(bad_, "# nothing\n");
    writeFile(look_, cube_);
}

void UserSession::run() {
    host_sim::Instance& effect = start(host_sim::premierePro());
    dialogs_ = &dialogsOf(host->module());
    *dialogs_ = {};
    EXPECT_EQ(effect.updateUi().error, PF_Err_NONE);
    EXPECT_EQ(effect.label(kLutButton), "Choose a LUT");
    render(effect, nullptr);
    refuseAFile(effect);
    pickALook(effect);
    EXPECT_EQ(host->handles().contents(effect.arbitrary(kLut)), widened(text_));
    tw::Lut3D look;
    ASSERT_TRUE(tw::parseEmbeddedText(text_, look, nullptr));
    effect.setSlider(kAmount, kAmountPercent);
    render(effect, &look);
    askForTheMatch(effect);
    saveAndLoad(effect);
    ASSERT_EQ(dialogs_->folders.size(), 2u);
    EXPECT_EQ(dialogs_->folders[0], dialogs_->folders[1]);
    dialogFolder_ = dialogs_->folders[0];
    closeHost();
}

void UserSession::pick(const std::string& file) {
    dialogs_->pick = [file] { return file; };
}

void UserSession::refuseAFile(host_sim::Instance& effect) {
    pick(bad_);
    const host_sim::CommandResult result = effect.press(kLutButton);
    EXPECT_EQ(result.error, PF_Err_NONE);
    EXPECT_EQ(result.changed, std::vector<int>());
    EXPECT_EQ(dialogs_->alerts, (Alerts{{"Tintwell could not read this LUT:\n" + bad_, true}}));
    EXPECT_EQ(effect.label(kLutButton), "Choose a LUT");
}

void UserSession::pickALook(host_sim::Instance& effect) {
    pick(look_);
    const host_sim::CommandResult result = effect.press(kLutButton);
    EXPECT_EQ(result.error, PF_Err_NONE);
    EXPECT_EQ(result.changed, std::vector<int>{kLut});
    EXPECT_EQ(dialogs_->alerts.size(), 1u);
    EXPECT_EQ(effect.label(kLutButton), "Film.cube");
}

void UserSession::render(host_sim::Instance& effect, const tw::Lut3D* look) {
    const host_sim::Frame in = scattered(host->format(8), 7, 5);
    const host_sim::Frame blank(host->format(8), 7, 5);
    host_sim::Frame out = blank;
    EXPECT_EQ(effect.render(in, out).error, PF_Err_NONE);
    const auto amount = static_cast<float>(kAmountPercent / 100.0);
    EXPECT_TRUE(samePixels(look ? graded(*look, in, blank, amount) : in, out));
}

void UserSession::askForTheMatch(host_sim::Instance& effect) {
    const host_sim::CommandResult result = effect.press(kEditButton);
    EXPECT_EQ(result.error, PF_Err_NONE);
    EXPECT_EQ(result.changed, std::vector<int>());
    EXPECT_EQ(dialogs_->alerts.size(), 1u);
}

void UserSession::saveAndLoad(host_sim::Instance& effect) {
    host->save(effect, work_ / "saved.project");
    host_sim::Instance& loaded = host->load(work_ / "saved.project");
    EXPECT_EQ(host->handles().contents(loaded.arbitrary(kLut)), widened(text_));
    EXPECT_EQ(loaded.slider(kAmount), kAmountPercent);
}

Lines UserSession::wholeLog() const {
    const std::string dialog = "LUT button: dialog in \"" + dialogFolder_ + "\"";
    return {
        kSetup,
        "LUT button: label \"Choose a LUT\" (update) -> err 0",
        "Render fmt=BGRA8u 7x5 rowbytes=60 id=0 amount=1.000 lut=none 0",
        "USER_CHANGED_PARAM index 3",
        dialog,
        "LUT button: could not read " + bad_ + ": no LUT_3D_SIZE",
        "USER_CHANGED_PARAM index 3",
        dialog,
        "LUT button: loaded " + look_ + " (2^3, " + std::to_string(2 * text_.size()) + " bytes)",
        "LUT button: label \"Film.cube\" (picked) -> err 0",
        "LUT button: label \"Film.cube\" (update) -> err 0",
        "Render fmt=BGRA8u 7x5 rowbytes=60 id=42 amount=0.501 lut=embedded 2",
        "USER_CHANGED_PARAM index 4",
        "Edit LUT: requested match 42 (Film)"};
}

Lines UserSession::logAt(const std::string& file) {
    Lines lines = withoutDataCallbacks(readLog(file));
    for (std::string& line : lines) {
        if (line.starts_with("GlobalSetup ")) line = kSetup;
    }
    return lines;
}

testing::AssertionResult UserSession::holdsRequest(const std::string& file) {
    const std::string text = readFile(file);
    if (isRequest(text, kMatch, "Film")) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the file holds " << testing::PrintToString(text);
}

}  // namespace twtest
