#include <cmath>
#include <limits>

#include "fuzz/session/process_home.h"
#include "fuzz/session/random_texts.h"
#include "fuzz/session/steps.h"
#include "fuzz/session/violation.h"
#include "tests/support/effect_fixture.h"

namespace session_fuzz {
namespace {

// Commands that the effect answers without doing anything need no record of their own; these do.
bool needsMore(PF_Cmd command) {
    switch (command) {
        case PF_Cmd_GLOBAL_SETUP:
        case PF_Cmd_PARAMS_SETUP:
        case PF_Cmd_RENDER:
        case PF_Cmd_USER_CHANGED_PARAM:
        case PF_Cmd_UPDATE_PARAMS_UI:
        case PF_Cmd_ARBITRARY_CALLBACK:
            return true;
        default:
            return false;
    }
}

constexpr char kAbout[] = "Tintwell 1.0\rApplies the colour match made in the Tintwell panel.";

}  // namespace

void apply(SessionState& session, Record&) {
    if (session.applied.size() == kMostInstances) return;
    Applied fresh;
    fresh.instance = &session.host.apply();
    fresh.lut = session.reference.copy(session.defaultValue);
    session.applied.push_back(fresh);
}

void duplicate(SessionState& session, Record& record) {
    const Applied* const source = session.chooseInstance(record);
    if (source == nullptr || session.applied.size() == kMostInstances) return;
    Applied fresh;
    fresh.instance = &session.host.duplicate(*source->instance);
    fresh.lut = session.reference.copy(source->lut);
    fresh.amount = source->amount;
    session.applied.push_back(fresh);
}

void remove(SessionState& session, Record& record) {
    const Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    session.host.remove(*one->instance);
    session.applied.remove_if([&](const Applied& other) { return &other == one; });
}

// Projects hold finite numbers only.
void saveAndLoad(SessionState& session, Record& record) {
    const Applied* const source = session.chooseInstance(record);
    if (source == nullptr || session.applied.size() == kMostInstances) return;
    if (!std::isfinite(source->amount)) return;
    const std::string file = processHome().home / "session.project";
    session.host.save(*source->instance, file);
    const Value flat =
        source->lut ? Value(session.reference.flatten(source->lut, source->lut->size())) : Value();
    Applied fresh;
    fresh.instance = &session.host.load(file);
    session.reference.copy(session.defaultValue);
    fresh.lut = flat ? session.reference.unflatten(flat) : std::nullopt;
    fresh.amount = source->amount;
    session.applied.push_back(fresh);
}

void setAmount(SessionState& session, Record& record) {
    Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    using Limits = std::numeric_limits<double>;
    const double amounts[] = {
        100.0, 50.1, 0.0, -20.0, 250.0, Limits::infinity(), 1e300, 1e-50, Limits::quiet_NaN()};
    const int which = record.below(10);
    one->amount = which < 9 ? amounts[which] : record.number<double>();
    one->instance->setSlider(kParamAmount, one->amount);
}

void setBytes(SessionState& session, Record& record) {
    Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    one->lut = makeBytes(record);
    one->instance->setBytes(kParamLut, *one->lut);
}

void setNull(SessionState& session, Record& record) {
    Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    one->lut.reset();
    one->instance->setNull(kParamLut);
}

void otherCommand(SessionState& session, Record& record) {
    const PF_Cmd command = record.below(64);
    const Applied* const one = session.chooseInstance(record);
    if (one == nullptr || needsMore(command)) return;
    const PF_OutData before = twtest::fullOutData();
    session.host.outPreset() = before;
    const host_sim::CommandResult result = one->instance->command(command);
    session.host.outPreset() = {};
    require(result.error == PF_Err_NONE, "the command gave an error");
    if (command == PF_Cmd_ABOUT) {
        require(result.message() == kAbout, "ABOUT says something else");
    } else {
        require(twtest::sameBytes(result.out, before), "out_data was written");
    }
}

}  // namespace session_fuzz
