#include "tests/threads/player.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "tests/effect/frames.h"

namespace stress {

using effect_test::kAmount;
using effect_test::kLut;
using effect_test::kLutButton;
using effect_test::samePixels;
using host_sim::Frame;

Player::Player(Stage& stage, int number, std::uint64_t seed)
    : stage_(stage),
      name_("Player." + std::to_string(seed) + "." + std::to_string(number)),
      number_(number),
      random_(seed * 1000 + static_cast<std::uint64_t>(number)),
      own_{&stage.host().duplicate(*stage.effects()[0].instance), stage.effects()[0].look, 0} {}

void Player::play(int rounds) {
    using Act = void (Player::*)();
    // The frequent ones more than once.
    static constexpr Act kActs[] = {
        &Player::render,         &Player::render,          &Player::render,
        &Player::renderOwn,      &Player::renderInPlace,   &Player::liveAValue,
        &Player::liveAValue,     &Player::useASharedOne,   &Player::refuseValues,
        &Player::updateLabel,    &Player::updateLabel,     &Player::pressLutButton,
        &Player::pressLutButton, &Player::pressEditButton, &Player::takeALook,
        &Player::takeANewLook,   &Player::moveTheSlider,   &Player::useTheGpu,
        &Player::useTheGpu,      &Player::useTheGpu,       &Player::fallBackToTheCpu};
    static constexpr Act kMainActs[] = {&Player::duplicate, &Player::saveAndLoad,
                                        &Player::readAbout};
    for (int round = 0; round < rounds; ++round) {
        const bool main = number_ == 0 && round % 4 == 0;
        const Act act = main ? kMainActs[round / 4 % 3]
                             : kActs[static_cast<std::size_t>(random_.below(std::size(kActs)))];
        (this->*act)();
        stage_.expectNoLock("between two operations");
    }
}

void Player::mayLogRender(const Effect& effect, const Frame& output) {
    const tw::Lut3D& lut = effect.look->lut;
    const char* kind = effect.look->isNone() ? "none" : lut.probe != 0 ? "pattern" : "embedded";
    char line[200];
    std::snprintf(line, sizeof line,
                  "Render fmt=%s %dx%d rowbytes=%ld id=%ld amount=%.3f lut=%s %d",
                  effect_test::isFloat(output) ? "BGRA32f" : "BGRA8u", output.width(),
                  output.height(), static_cast<long>(output.rowBytes()), static_cast<long>(lut.id),
                  kPercents[effect.percent] / 100.0, kind, lut.probe != 0 ? lut.probe : lut.size);
    account_.mayLog(line);
    // By the call that decoded it.
    if (!effect.look->failure.empty()) account_.mayLog("Embedded LUT: " + effect.look->failure);
}

void Player::mayLogLabel(const Look& look, const std::string& reason) {
    account_.mayLog("LUT button: label \"" + look.label + "\" (" + reason + ") -> err 0");
}

void Player::renderOne(const Effect& effect, std::size_t scene) {
    const Frame& input = repertoire().scenes()[scene];
    Frame output = blank(input);
    mayLogRender(effect, output);
    EXPECT_EQ(effect.instance->render(input, output).error, 0);
    EXPECT_TRUE(samePixels(effect.look->pictures[scene][effect.percent], output))
        << effect.look->label << ", scene " << scene;
    account_.did(effect_test::isFloat(input) ? "CPU frames of floats" : "CPU frames of 8 bits");
    if (effect.look->lut.probe != 0) account_.did("CPU frames with the pattern");
    if (effect.look->isNone()) account_.did("CPU frames without a LUT");
}

void Player::render() {
    renderOne(any(stage_.effects()), anyScene());
}

void Player::renderOwn() {
    renderOne(own_, anyScene());
}

void Player::renderInPlace() {
    const Effect& effect = any(stage_.effects());
    const std::size_t scene = anyScene();
    Frame both = repertoire().scenes()[scene];
    mayLogRender(effect, both);
    EXPECT_EQ(effect.instance->render(both, both).error, 0);
    EXPECT_TRUE(samePixels(effect.look->pictures[scene][effect.percent], both))
        << effect.look->label << ", scene " << scene;
    account_.did("CPU frames in place");
}

void Player::updateLabel() {
    updateLabelOf(any(stage_.effects()));
}

void Player::updateLabelOf(const Effect& effect) {
    mayLogLabel(*effect.look, "update");
    EXPECT_EQ(effect.instance->updateUi().error, 0);
    EXPECT_EQ(effect.instance->label(kLutButton), effect.look->label);
    account_.did("label updates");
}

void Player::takeALook() {
    own_.look = &any(repertoire().looks());
    own_.set();
    account_.did("looks from the panel");
    renderOwn();
}

// New contents to decode, and new labels to keep.
void Player::takeANewLook() {
    newLook_ = renamed(repertoire().looks()[1], name_ + "." + std::to_string(newLooks_++));
    own_.look = &newLook_;
    own_.set();
    account_.did("new looks from the panel");
    updateLabelOf(own_);
    ownLabel_ = newLook_.label;
    renderOwn();
}

void Player::moveTheSlider() {
    own_.percent = static_cast<std::size_t>(random_.below(kPercents.size()));
    own_.set();
    renderOwn();
}

void Player::duplicate() {
    Effect twin = any(stage_.effects());
    twin.instance = &stage_.host().duplicate(*twin.instance);
    renderOne(twin, anyScene());
    stage_.host().remove(*twin.instance);
    account_.did("effects duplicated");
}

void Player::saveAndLoad() {
    const twtest::TempFolder folder;
    const Effect& effect = any(stage_.effects());
    stage_.host().save(*effect.instance, folder / "project");
    host_sim::Instance& loaded = stage_.host().load(folder / "project");
    EXPECT_EQ(loaded.flatten(kLut).value, effect.look->bytes);
    EXPECT_EQ(loaded.slider(kAmount), kPercents[effect.percent]);
    stage_.host().remove(loaded);
    account_.did("projects saved and loaded");
}

void Player::readAbout() {
    const std::string about = "Tintwell 1.0\rApplies the colour match made in the Tintwell panel.";
    EXPECT_EQ(stage_.host().command(PF_Cmd_ABOUT).message(), about);
}

}  // namespace stress
