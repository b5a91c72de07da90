#include "tests/quitting/calls.h"

#include <cstdlib>
#include <filesystem>

#include "tests/quitting/ending.h"
#include "tests/support/frames.h"
#include "tests/support/stand_in_module.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tested_module.h"
#include "tests/support/texts.h"

namespace quitting {
namespace {

using host_sim::Instance;
using host_sim::Personality;
using twtest::Bytes;
using twtest::kAmount;
using twtest::kEditButton;
using twtest::kLut;
using twtest::kLutButton;

const Personality& afterEffects() {
    static const auto& host = *new Personality(host_sim::afterEffects());
    return host;
}

const Personality& premierePro() {
    static const auto& host = *new Personality(host_sim::premierePro());
    return host;
}

// More LUTs than the decode cache keeps, with names and ids of many lengths.
std::string lookOf(int round) {
    const std::string name = "look" + std::string(static_cast<std::size_t>(round % 40), 'k');
    return twtest::scatteredText(2, static_cast<std::uint64_t>(round % 12), round * 7919 + 1, name);
}

void store(Instance& effect, const std::string& text) {
    effect.setBytes(kLut, twtest::widened(text));
}

void render(OpenSession& session, Instance& effect, int round, int bits) {
    constexpr int kWidths[] = {5, 50, 500};
    store(effect, lookOf(round));
    effect.setSlider(kAmount, 50.0 + round % 7);
    const host_sim::Frame in =
        twtest::scattered(session.host().format(bits), kWidths[round % 3], 40);
    host_sim::Frame out(in.format(), in.width(), in.height());
    require(effect.render(in, out).error == 0, "a render failed");
    require(out.pixelBytes() != in.pixelBytes(), "a render changed nothing");
}

void renderBytes(OpenSession& session, Instance& effect, int round) {
    render(session, effect, round, 8);
}

void renderFloats(OpenSession& session, Instance& effect, int round) {
    render(session, effect, round, 32);
}

void updateLabel(OpenSession&, Instance& effect, int round) {
    store(effect, lookOf(round));
    require(effect.updateUi().error == 0, "a label was not updated");
    require(effect.label(kLutButton).starts_with("look"), "a label is wrong");
}

// What the user of this thread picks next: the file, nothing, or a file that is not there.
enum Pick { kFile, kNothing, kMissingFile, kPicks };
thread_local int nextPick = kFile;

void pressLutButton(OpenSession&, Instance& effect, int round) {
    nextPick = round % kPicks;
    const host_sim::CommandResult result = effect.press(kLutButton);
    require(result.error == 0, "the LUT button failed");
    require(result.changed.empty() == (nextPick != kFile), "the LUT button stored the wrong thing");
}

void pressEditButton(OpenSession&, Instance& effect, int round) {
    store(effect, round % 2 == 0 ? lookOf(round) : "TWLUT0");
    require(effect.press(kEditButton).error == 0, "the Edit LUT button failed");
}

void storeAndLoad(OpenSession& session, const host_sim::ArbitraryCalls& data, PF_ArbitraryH value) {
    const auto flat = data.flatten(value);
    const auto loaded = data.unflatten(flat.value);
    require(session.host().handles().contents(loaded.value) == flat.value, "data was lost");
    const auto foreign = data.unflatten(Bytes(50, 7));
    require(data.compare(value, loaded.value).value == PF_ArbCompare_EQUAL, "data is not equal");
    data.dispose(loaded.value);
    data.dispose(foreign.value);
}

void printAndScan(const host_sim::ArbitraryCalls& data, PF_ArbitraryH value) {
    const auto text = data.print(value).value;
    const auto scanned = data.scan(text);
    require(scanned.error == 0, "a text was not taken");
    require(data.print(scanned.value).value == text, "a text changed");
    require(data.scan("TWLUT3 no").error == PF_Err_CANNOT_PARSE_KEYFRAME_TEXT, "a text was taken");
    data.dispose(scanned.value);
}

void callForData(OpenSession& session, Instance& effect, int round) {
    store(effect, lookOf(round));
    const host_sim::ArbitraryCalls data = session.data();
    const PF_ArbitraryH value = effect.arbitrary(kLut);
    storeAndLoad(session, data, value);
    printAndScan(data, value);
    for (const PF_ArbitraryH made :
         {data.create().value, data.copy(value).value, data.interpolate(value, value, 0.5).value})
        data.dispose(made);
}

void setUpAgain(OpenSession&, Instance& effect, int) {
    require(effect.command(PF_Cmd_GLOBAL_SETUP).error == 0, "GLOBAL_SETUP failed");
    require(!effect.command(PF_Cmd_ABOUT).message().empty(), "About says nothing");
    require(effect.press(kAmount).error == 0, "a press of something else failed");
}

}  // namespace

OpenSession::OpenSession(const Personality& personality)
    : host_(twtest::testedModule(), personality),
      dialogs_(twtest::dialogsOf(host_.module())),
      cubeFile_(std::string(std::getenv("HOME")) + "/look.cube") {
    dialogs_.pick = [this] {
        inDialog();
        const std::string picks[] = {cubeFile_, "", cubeFile_ + "no"};
        return picks[nextPick];
    };
    host_.start();
    std::string text = "LUT_3D_SIZE 2\n";
    for (int point = 0; point < 8; ++point)
        text += point % 3 == 0 ? "0 0.5 1\n" : "1 0 0.25\n";
    twtest::writeFile(cubeFile_, text);
}

Instance& OpenSession::apply() {
    return host_.apply();
}

host_sim::ArbitraryCalls OpenSession::data() {
    return host_.arbitraryCalls(kLut);
}

std::ostream& operator<<(std::ostream& out, const Kind& kind) {
    return out << kind.name;
}

const Kind& framesOfFloats() {
    static const Kind kind{"FramesOfFloatsInPremierePro", premierePro, renderFloats};
    return kind;
}

const Kind& pressesOfTheLutButton() {
    static const Kind kind{"PressesOfTheLutButton", premierePro, pressLutButton};
    return kind;
}

const std::vector<Kind>& kinds() {
    static const auto& all = *new std::vector<Kind>{
        {"FramesOf8BitsInAfterEffects", afterEffects, renderBytes},
        {"FramesOf8BitsInPremierePro", premierePro, renderBytes},
        framesOfFloats(),
        {"LabelUpdates", premierePro, updateLabel},
        pressesOfTheLutButton(),
        {"PressesOfTheEditButton", premierePro, pressEditButton},
        {"DataCallbacks", premierePro, callForData},
        {"SetupAndOtherCommands", premierePro, setUpAgain},
    };
    return all;
}

}  // namespace quitting
