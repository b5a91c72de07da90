// The bundle's x86-64 code beside the Linux module: the same session gives the same pictures, the
// same log and the same answers; and what it asks of AppKit.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "gpu/entry_point.h"
#include "host_sim/host.h"
#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/macos_check/bundle_messages.h"
#include "tests/support/effect_fixture.h"

namespace {

using twtest::Bytes;
using twtest::kAmount;
using twtest::kEditButton;
using twtest::kLut;
using twtest::kLutButton;
using twtest::Lines;
using twtest::TempHome;

// A far from linear LUT, with a match id.
std::string bentText() {
    tw::Lut3D lut;
    lut.size = 9;
    for (std::size_t i = 0; i < tw::latticeFloats(lut.size); ++i)
        lut.data.push_back(static_cast<float>(i * 2654435761U % 4096) / 4095.0f);
    return tw::toEmbeddedText(lut, 7, "two");
}

// Every byte depends on its place; floats stay finite, some outside 0..1.
void paint(host_sim::Frame& frame) {
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            const int v = x * 7 + y * 31;
            const auto byte = [v](int k) { return static_cast<std::uint8_t>(v * k); };
            if (frame.bytesPerPixel() == 4)
                frame.setPixel8(x, y, {byte(3), byte(5), byte(11), byte(13)});
            else
                frame.setPixelF(x, y,
                                {static_cast<float>(byte(3)) / 200.0f - 0.1f,
                                 static_cast<float>(byte(5)) / 255.0f,
                                 static_cast<float>(byte(11)) / 255.0f, 0.5f});
        }
    }
}

struct Outcome {
    std::vector<Bytes> pictures;
    std::vector<Bytes> values;
    std::vector<int> errors;
    Lines log;
    Lines problems;
    std::string label;

    bool operator==(const Outcome&) const = default;
};

void render(Outcome& outcome, host_sim::Host& host, host_sim::Instance& effect) {
    for (const int bits : {8, 32}) {
        host_sim::Frame in(host.format(bits), 203, 97);
        host_sim::Frame out(host.format(bits), 203, 97);
        paint(in);
        outcome.errors.push_back(effect.render(in, out).error);
        outcome.pictures.push_back(out.pixelBytes());
    }
}

void keepValue(Outcome& outcome, const host_sim::Answer<Bytes>& answer) {
    outcome.errors.push_back(answer.error);
    outcome.values.push_back(answer.value);
}

// Everything but the buttons, which need dialogs.
Outcome runSession(const char* module, const host_sim::Personality& personality) {
    const TempHome home;
    Outcome outcome;
    host_sim::Host host(module, personality);
    host.start();
    host_sim::Instance& effect = host.apply();
    render(outcome, host, effect);
    outcome.errors.push_back(effect.scan(kLut, bentText()));
    for (const double amount : {100.0, 37.5, 0.0}) {
        effect.setSlider(kAmount, amount);
        render(outcome, host, effect);
    }
    effect.setSlider(kAmount, 100.0);
    keepValue(outcome, effect.flatten(kLut));
    keepValue(outcome, host.duplicate(effect).flatten(kLut));
    outcome.errors.push_back(effect.updateUi().error);
    outcome.label = effect.label(kLutButton);
    for (const char* text : {"TWLUTP 5", "TWLUT3 0 - 129 0 1 AAAA", "no LUT at all", "TWLUT0"}) {
        outcome.errors.push_back(effect.scan(kLut, text));
        render(outcome, host, effect);
    }
    outcome.problems = host.close();
    outcome.log = twtest::logLines(home);
    return outcome;
}

void expectSame(const host_sim::Personality& personality) {
    const Outcome linuxOutcome = runSession(TINTWELL_MODULE, personality);
    const Outcome bundle = runSession(TINTWELL_BUNDLE_MODULE, personality);
    EXPECT_EQ(linuxOutcome.problems, Lines());
    EXPECT_EQ(bundle.log, linuxOutcome.log);
    EXPECT_EQ(bundle.errors, linuxOutcome.errors);
    EXPECT_EQ(bundle.label, linuxOutcome.label);
    EXPECT_TRUE(bundle == linuxOutcome);
    // The session had more than copies and failures.
    EXPECT_EQ(linuxOutcome.pictures.size(), 16U);
    EXPECT_NE(linuxOutcome.pictures[0], linuxOutcome.pictures[2]);
    EXPECT_NE(linuxOutcome.pictures[2], linuxOutcome.pictures[8]);
}

TEST(BundleSession, isTheLinuxModules_inPremierePro) {
    expectSame(host_sim::premierePro());
}

TEST(BundleSession, isTheLinuxModules_inAfterEffects) {
    expectSame(host_sim::afterEffects());
}

struct FilterOffer {
    prSuiteError error;
    csSDK_int32 index;
    csSDK_uint32 version;
    bool complete;  // every callback is there

    bool operator==(const FilterOffer&) const = default;
};

FilterOffer offeredFilter(const char* module, csSDK_int32 index, bool startUp) {
    const auto entry = reinterpret_cast<decltype(&xGPUFilterEntry)>(
        host_sim::Module(module).symbol("xGPUFilterEntry"));
    PrGPUFilter filter{};
    PrGPUFilterInfo info{};
    const prSuiteError error = entry(2, &index, startUp, nullptr, &filter, &info);
    const bool complete = filter.CreateInstance && filter.DisposeInstance &&
                          filter.GetFrameDependencies && filter.Precompute && filter.Render;
    return {error, index, info.outInterfaceVersion, complete};
}

// Only what is offered: there is no Metal here for the bundle's code.
TEST(BundleGpu, offersTheLinuxModulesFilter) {
    for (const bool startUp : {true, false}) {
        for (const csSDK_int32 index : {-1, 0, 1}) {
            EXPECT_TRUE(offeredFilter(TINTWELL_BUNDLE_MODULE, index, startUp) ==
                        offeredFilter(TINTWELL_MODULE, index, startUp))
                << index << startUp;
        }
    }
    EXPECT_TRUE(offeredFilter(TINTWELL_BUNDLE_MODULE, 0, true) == FilterOffer({0, 0, 2, true}));
}

// An applied effect of the bundle, and the AppKit that it talks to.
class BundleDialogs : public twtest::EffectTest {
protected:
    void SetUp() override {
        openHost(host_sim::premierePro(), TINTWELL_BUNDLE_MODULE).start();
        effect_ = &host->apply();
        void* appKit = host->module().symbol("tintwell_bundle_appkit");
        appKit_ = reinterpret_cast<decltype(&tintwell_bundle_appkit)>(appKit)();
    }
    void TearDown() override {
        EXPECT_EQ(appKit_->openPools, 0);
        EXPECT_EQ(appKit_->liveObjects, 0);
        EffectTest::TearDown();
    }

    host_sim::Instance* effect_ = nullptr;
    macho::AppKit* appKit_ = nullptr;
};

Lines panelMessages(const std::string& folder, const Lines& afterwards) {
    Lines lines = {
        "[NSThread isMainThread]",
        "[NSOpenPanel openPanel]",
        "[NSOpenPanel setTitle:\"Tintwell: choose a LUT\"]",
        "[NSOpenPanel setMessage:\"Choose a .cube LUT to store in this Tintwell effect.\"]",
        "[NSOpenPanel setCanChooseFiles:1]",
        "[NSOpenPanel setCanChooseDirectories:0]",
        "[NSOpenPanel setAllowsMultipleSelection:0]",
        "[UTType typeWithFilenameExtension:\"cube\"]",
        "[NSArray arrayWithObjects:count:...]",
        "[NSOpenPanel setAllowedContentTypes:NSArray]",
        "[NSString stringWithUTF8String:\"" + folder + "\"]",
        "[NSURL fileURLWithPath:isDirectory:\"" + folder + "\"]",
        "[NSOpenPanel setDirectoryURL:NSURL]",
        "[NSOpenPanel runModal]"};
    lines.insert(lines.end(), afterwards.begin(), afterwards.end());
    return lines;
}

TEST_F(BundleDialogs, openAPanelOnTheLutFolder_whenTheLutButtonIsPressed) {
    EXPECT_EQ(effect_->press(kLutButton).error, 0);
    EXPECT_EQ(appKit_->messages, panelMessages(home / "Documents/Tintwell LUTs", {}));
}

TEST_F(BundleDialogs, setNoFolder_whenThereIsNone) {
    unsetenv("HOME");
    EXPECT_EQ(effect_->press(kLutButton).error, 0);
    Lines expected = panelMessages("", {});
    expected.erase(expected.end() - 4, expected.end() - 1);
    EXPECT_EQ(expected.back(), "[NSOpenPanel runModal]");
    EXPECT_EQ(appKit_->messages, expected);
}

TEST_F(BundleDialogs, takeAChoiceWithoutAPathForNone) {
    appKit_->pick = [](const std::string&) { return "/cube"; };
    appKit_->chosenHasPath = false;
    const host_sim::CommandResult result = effect_->press(kLutButton);
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.changed, std::vector<int>());
    EXPECT_EQ(appKit_->messages.back(), "[NSURL fileSystemRepresentation]");
    EXPECT_EQ(newLogLines().back(), "LUT button: cancelled");
}

TEST_F(BundleDialogs, storeTheChosenFile) {
    const std::string cube = home / "half.cube";
    twtest::writeFile(
        cube, "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 .5\n1 0 .5\n0 1 .5\n1 1 .5\n");
    appKit_->pick = [&](const std::string&) { return cube; };
    EXPECT_EQ(effect_->press(kLutButton).changed, std::vector<int>{kLut});
    EXPECT_EQ(appKit_->messages,
              panelMessages(home / "Documents/Tintwell LUTs",
                            {"[NSOpenPanel URL]", "[NSURL fileSystemRepresentation]"}));
    EXPECT_EQ(effect_->label(kLutButton), "half.cube");
}

TEST_F(BundleDialogs, showAnAlert_whenThereIsNoMatchToEdit) {
    EXPECT_EQ(effect_->press(kEditButton).error, 0);
    ASSERT_EQ(appKit_->messages.size(), 8U);
    EXPECT_TRUE(appKit_->messages[1].starts_with("[NSString stringWithUTF8String:\""));
    EXPECT_EQ(appKit_->messages[2], "[NSAlert setMessageText:\"Tintwell\"]");
    EXPECT_TRUE(appKit_->messages[3].starts_with("[NSAlert setInformativeText:\""));
    EXPECT_EQ(Lines(appKit_->messages.begin() + 4, appKit_->messages.end()),
              Lines({"[NSAlert setAlertStyle:1]", "[NSAlert addButtonWithTitle:\"OK\"]",
                     "[NSAlert runModal]", "[NSAlert release]"}));
}

TEST_F(BundleDialogs, areHandedToTheMainThread_fromAnother) {
    std::thread([this] { effect_->press(kLutButton); }).join();
    ASSERT_GE(appKit_->messages.size(), 2U);
    EXPECT_EQ(appKit_->messages[0], "[NSThread isMainThread]");
    EXPECT_EQ(appKit_->messages[1], "dispatch_sync");
}

}  // namespace
