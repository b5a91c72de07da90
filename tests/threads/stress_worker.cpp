#include "tests/threads/stress_worker.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "tests/support/frames.h"

namespace stress {

using host_sim::Frame;
using twtest::kAmount;
using twtest::kLut;
using twtest::kLutButton;
using twtest::samePixels;

Worker::Worker(SharedHost& shared, int number, std::uint64_t seed)
    : shared_(shared),
      name_("Worker." + std::to_string(seed) + "." + std::to_string(number)),
      number_(number),
      random_(seed * 1000 + static_cast<std::uint64_t>(number)),
      own_{&shared.host().duplicate(*shared.effects()[0].instance), shared.effects()[0].look, 0} {}

void Worker::run(int rounds) {
    using Operation = void (Worker::*)();
    // The frequent ones more than once.
    static constexpr Operation kOperations[] = {
        &Worker::render,         &Worker::render,          &Worker::render,
        &Worker::renderOwn,      &Worker::renderInPlace,   &Worker::useOneValue,
        &Worker::useOneValue,    &Worker::useSharedValue,  &Worker::refuseValues,
        &Worker::updateLabel,    &Worker::updateLabel,     &Worker::pressLutButton,
        &Worker::pressLutButton, &Worker::pressEditButton, &Worker::setLook,
        &Worker::setNewLook,     &Worker::setAmount,       &Worker::useTheGpu,
        &Worker::useTheGpu,      &Worker::useTheGpu,       &Worker::fallBackToTheCpu};
    static constexpr Operation kMainOperations[] = {&Worker::duplicate, &Worker::saveAndLoad,
                                                    &Worker::readAbout};
    for (int round = 0; round < rounds; ++round) {
        const bool main = number_ == 0 && round % 4 == 0;
        const Operation operation =
            main ? kMainOperations[round / 4 % 3]
                 : kOperations[static_cast<std::size_t>(random_.below(std::size(kOperations)))];
        (this->*operation)();
        shared_.expectNoLock("between two operations");
    }
}

void Worker::mayLogRender(const Effect& effect, const Frame& output) {
    const tw::Lut3D& lut = effect.look->lut;
    const char* kind = effect.look->isNone() ? "none" : lut.probe != 0 ? "pattern" : "embedded";
    char line[200];
    std::snprintf(line, sizeof line,
                  "Render fmt=%s %dx%d rowbytes=%ld id=%ld amount=%.3f lut=%s %d",
                  twtest::isFloat(output) ? "BGRA32f" : "BGRA8u", output.width(), output.height(),
                  static_cast<long>(output.rowBytes()), static_cast<long>(lut.id),
                  kPercents[effect.percent] / 100.0, kind, lut.probe != 0 ? lut.probe : lut.size);
    tally_.mayLog(line);
    // By the call that decoded it.
    if (!effect.look->failure.empty()) tally_.mayLog("Embedded LUT: " + effect.look->failure);
}

void Worker::mayLogLabel(const Look& look, const std::string& reason) {
    tally_.mayLog("LUT button: label \"" + look.label + "\" (" + reason + ") -> err 0");
}

void Worker::renderOne(const Effect& effect, std::size_t scene) {
    const Frame& input = inputs().scenes()[scene];
    Frame output = blank(input);
    mayLogRender(effect, output);
    EXPECT_EQ(effect.instance->render(input, output).error, 0);
    EXPECT_TRUE(samePixels(effect.look->pictures[scene][effect.percent], output))
        << effect.look->label << ", scene " << scene;
    tally_.did(twtest::isFloat(input) ? "CPU frames of floats" : "CPU frames of 8 bits");
    if (effect.look->lut.probe != 0) tally_.did("CPU frames with the pattern");
    if (effect.look->isNone()) tally_.did("CPU frames without a LUT");
}

void Worker::render() {
    renderOne(any(shared_.effects()), anyScene());
}

void Worker::renderOwn() {
    renderOne(own_, anyScene());
}

void Worker::renderInPlace() {
    const Effect& effect = any(shared_.effects());
    const std::size_t scene = anyScene();
    Frame both = inputs().scenes()[scene];
    mayLogRender(effect, both);
    EXPECT_EQ(effect.instance->render(both, both).error, 0);
    EXPECT_TRUE(samePixels(effect.look->pictures[scene][effect.percent], both))
        << effect.look->label << ", scene " << scene;
    tally_.did("CPU frames in place");
}

void Worker::updateLabel() {
    updateLabelOf(any(shared_.effects()));
}

void Worker::updateLabelOf(const Effect& effect) {
    mayLogLabel(*effect.look, "update");
    EXPECT_EQ(effect.instance->updateUi().error, 0);
    EXPECT_EQ(effect.instance->label(kLutButton), effect.look->label);
    tally_.did("label updates");
}

void Worker::setLook() {
    own_.look = &any(inputs().looks());
    own_.set();
    tally_.did("looks from the panel");
    renderOwn();
}

// New contents to decode, and new labels to keep.
void Worker::setNewLook() {
    newLook_ = renamed(inputs().looks()[1], name_ + "." + std::to_string(newLooks_++));
    own_.look = &newLook_;
    own_.set();
    tally_.did("new looks from the panel");
    updateLabelOf(own_);
    ownLabel_ = newLook_.label;
    renderOwn();
}

void Worker::setAmount() {
    own_.percent = static_cast<std::size_t>(random_.below(kPercents.size()));
    own_.set();
    renderOwn();
}

void Worker::duplicate() {
    Effect twin = any(shared_.effects());
    twin.instance = &shared_.host().duplicate(*twin.instance);
    renderOne(twin, anyScene());
    shared_.host().remove(*twin.instance);
    tally_.did("effects duplicated");
}

void Worker::saveAndLoad() {
    const twtest::TempFolder folder;
    const Effect& effect = any(shared_.effects());
    shared_.host().save(*effect.instance, folder / "project");
    host_sim::Instance& loaded = shared_.host().load(folder / "project");
    EXPECT_EQ(loaded.flatten(kLut).value, effect.look->bytes);
    EXPECT_EQ(loaded.slider(kAmount), kPercents[effect.percent]);
    shared_.host().remove(loaded);
    tally_.did("projects saved and loaded");
}

void Worker::readAbout() {
    const std::string about = "Tintwell 1.0\rApplies the colour match made in the Tintwell panel.";
    EXPECT_EQ(shared_.host().command(PF_Cmd_ABOUT).message(), about);
}

}  // namespace stress
