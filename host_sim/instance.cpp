#include "host_sim/instance.h"

#include <mutex>
#include <optional>
#include <utility>

#include "host_sim/session.h"
#include "host_sim/values/error.h"

namespace host_sim {
namespace {

// A world that the effect may ask about as long as this lives.
class LentWorld {
public:
    LentWorld(Session& session, const Frame& frame) : session_(session), world_(frame.world()) {
        if (!session.personality.isPremiere()) {
            world_.extent_hint = {0, 0, frame.width(), frame.height()};
        }
        session_.formats.lend(world_, frame.format());
    }
    ~LentWorld() { session_.formats.withdraw(world_); }
    LentWorld(const LentWorld&) = delete;
    LentWorld& operator=(const LentWorld&) = delete;

    const PF_EffectWorld& operator*() const { return world_; }

private:
    Session& session_;
    PF_EffectWorld world_;
};

}  // namespace

Instance::Instance(Session& session, int number) : session_(session), number_(number) {
    for (int index = 0; index < session.params.count(); ++index) {
        PF_ParamDef definition = session.params.at(index).definition;
        // In commands this field holds change flags, not the id.
        definition.uu.change_flags = PF_ChangeFlag_NONE;
        if (definition.param_type == PF_Param_FLOAT_SLIDER) {
            definition.u.fs_d.value = static_cast<double>(definition.u.fs_d.dephault);
        }
        values_.push_back(definition);
    }
}

CommandResult Instance::render(const Frame& input, Frame& output, const RenderSettings& settings) {
    const Frame outputBefore = output;
    std::optional<Frame> inputBefore;
    if (&input != &output) inputBefore = input;
    CommandResult result;
    {
        const std::shared_lock lock(mutex_);
        // First: a request that comes while the effect renders is not met by this picture.
        needsRender_ = false;
        result = renderLocked(input, output, settings);
    }
    const std::string during =
        " (during PF_Cmd_RENDER of instance " + std::to_string(number_) + ")";
    if (const auto place = output.changeOutside(outputBefore)) {
        session_.books.problemAtEnd("The effect wrote outside the output, at " + *place + during);
    }
    if (inputBefore && !input.sameMemory(*inputBefore)) {
        session_.books.problemAtEnd("The effect wrote into the input" + during);
    }
    return result;
}

CommandResult Instance::renderLocked(const Frame& input, Frame& output,
                                     const RenderSettings& settings) {
    const LentWorld inputWorld(session_, input);
    const LentWorld outputWorld(session_, output);
    std::vector<PF_ParamDef> values = values_;
    values[0].u.ld = *inputWorld;
    const auto sendStep = [&](PF_Cmd command, PF_LayerDef* world) {
        Request request;
        request.command = command;
        request.output = world;
        request.settings = settings;
        request.width = input.width();
        request.height = input.height();
        return sendWith(values, request);
    };
    CommandResult setup = sendStep(PF_Cmd_FRAME_SETUP, nullptr);
    if (setup.error != PF_Err_NONE) return setup;
    Guarded<PF_LayerDef> world(*outputWorld);
    world->world_flags |= PF_WorldFlag_WRITEABLE;
    CommandResult result = sendStep(PF_Cmd_RENDER, world.get());
    if (!world.isIntact()) session_.books.problemAtEnd("Bytes beside the output were overwritten");
    sendStep(PF_Cmd_FRAME_SETDOWN, nullptr);
    return result;
}

CommandResult Instance::sendWith(const std::vector<PF_ParamDef>& values, Request request) const {
    ParamArray params(values, session_.books);
    request.instance = number_;
    request.effectRef = session_.effectRef(number_);
    request.params = &params;
    return send(session_, request);
}

CommandResult Instance::press(int index) {
    session_.params.at(index);
    Guarded<PF_UserChangedParamExtra> extra({index});
    CommandResult result = sendPress(extra.get());
    if (!extra.isIntact()) {
        session_.books.problemAtEnd("Bytes beside the extra record were overwritten");
    }
    return result;
}

CommandResult Instance::pressWithoutRecord() {
    return sendPress(nullptr);
}

CommandResult Instance::sendPress(void* extra) {
    CommandResult result = command(PF_Cmd_USER_CHANGED_PARAM, extra);
    if ((result.out.out_flags & PF_OutFlag_FORCE_RERENDER) != 0) needsRender_ = true;
    if ((result.out.out_flags & PF_OutFlag_REFRESH_UI) != 0) updateUi();
    return result;
}

CommandResult Instance::updateUi() {
    return command(PF_Cmd_UPDATE_PARAMS_UI);
}

CommandResult Instance::command(PF_Cmd command, void* extra) {
    Request request;
    request.command = command;
    request.extra = extra;
    if (!mayChangeValues(command)) {
        const std::shared_lock lock(mutex_);
        return sendWith(values_, request);
    }
    const std::unique_lock lock(mutex_);
    ParamArray params(values_, session_.books);
    request.instance = number_;
    request.effectRef = session_.effectRef(number_);
    request.params = &params;
    CommandResult result = send(session_, request);
    takeOver(params, result.changed);
    return result;
}

void Instance::takeOver(ParamArray& params, const std::vector<int>& changed) {
    // A resize may have replaced handles even where no change is flagged.
    for (const int index : session_.params.arbitraryIndices()) {
        PF_ArbitraryDef& arbitrary = value(index, PF_Param_ARBITRARY_DATA).u.arb_d;
        arbitrary.value = session_.handles.latest(arbitrary.value);
    }
    for (const int index : changed) {
        needsRender_ = true;
        if (params[index].param_type == PF_Param_FLOAT_SLIDER) {
            value(index, PF_Param_FLOAT_SLIDER).u.fs_d.value = params[index].u.fs_d.value;
        }
        if (params[index].param_type == PF_Param_ARBITRARY_DATA) {
            replace(index, params[index].u.arb_d.value);
        }
    }
}

// The instance's mutex is held exclusively.
void Instance::replace(int index, PF_ArbitraryH handle) {
    PF_ArbitraryDef& arbitrary = value(index, PF_Param_ARBITRARY_DATA).u.arb_d;
    const PF_ArbitraryH old = arbitrary.value;
    if (handle == old) return;
    if (handle != nullptr && !session_.handles.isLive(handle)) {
        session_.books.problemAtEnd("The effect put an unknown handle into parameter " +
                                    std::to_string(index));
        return;
    }
    arbitrary.value = handle;
    needsRender_ = true;
    if (session_.handles.isLive(old)) arbitraryCalls(index).dispose(old);
}

double Instance::slider(int index) const {
    const std::shared_lock lock(mutex_);
    return value(index, PF_Param_FLOAT_SLIDER).u.fs_d.value;
}

void Instance::setSlider(int index, double number) {
    const std::unique_lock lock(mutex_);
    value(index, PF_Param_FLOAT_SLIDER).u.fs_d.value = number;
    needsRender_ = true;
}

PF_ArbitraryH Instance::arbitrary(int index) const {
    const std::shared_lock lock(mutex_);
    return value(index, PF_Param_ARBITRARY_DATA).u.arb_d.value;
}

ArbitraryCalls Instance::arbitraryCalls(int index) const {
    // The declaration is constant, unlike the value beside it.
    const PF_ParamDef& declared = session_.params.at(index).definition;
    if (declared.param_type != PF_Param_ARBITRARY_DATA) {
        throw SimError("Parameter " + std::to_string(index) + " holds no arbitrary data.");
    }
    return {session_, declared.u.arb_d, number_};
}

Answer<std::vector<std::uint8_t>> Instance::flatten(int index) const {
    const std::shared_lock lock(mutex_);
    return arbitraryCalls(index).flatten(value(index, PF_Param_ARBITRARY_DATA).u.arb_d.value);
}

Answer<std::string> Instance::print(int index) const {
    const std::shared_lock lock(mutex_);
    return arbitraryCalls(index).print(value(index, PF_Param_ARBITRARY_DATA).u.arb_d.value);
}

PF_Err Instance::unflatten(int index, const std::vector<std::uint8_t>& bytes) {
    const std::unique_lock lock(mutex_);
    const Answer<PF_ArbitraryH> made = arbitraryCalls(index).unflatten(bytes);
    if (made.error == PF_Err_NONE) replace(index, made.value);
    return made.error;
}

PF_Err Instance::scan(int index, std::string_view text) {
    const std::unique_lock lock(mutex_);
    const Answer<PF_ArbitraryH> made = arbitraryCalls(index).scan(text);
    if (made.error == PF_Err_NONE) replace(index, made.value);
    return made.error;
}

void Instance::setBytes(int index, const std::vector<std::uint8_t>& bytes) {
    const std::unique_lock lock(mutex_);
    value(index, PF_Param_ARBITRARY_DATA);
    replace(index, session_.handles.hostAllocate(bytes));
}

void Instance::setNull(int index) {
    const std::unique_lock lock(mutex_);
    replace(index, nullptr);
}

std::string Instance::label(int index) const {
    return session_.paramUpdates.label(number_, index, session_.params.at(index).label);
}

std::vector<ParamUpdate> Instance::updates() const {
    return session_.paramUpdates.updates(number_);
}

SavedEffect Instance::save(const std::string& matchName) const {
    const std::shared_lock lock(mutex_);
    SavedEffect saved{matchName, {}};
    for (int index = 1; index < session_.params.count(); ++index) {
        const PF_ParamDef& declared = session_.params.at(index).definition;
        if (declared.param_type == PF_Param_BUTTON) continue;
        SavedParam param{declared.uu.id, declared.param_type, declared.name, 0.0, {}};
        const PF_ParamDef& held = value(index, declared.param_type);
        if (declared.param_type == PF_Param_FLOAT_SLIDER) param.number = held.u.fs_d.value;
        if (declared.param_type == PF_Param_ARBITRARY_DATA && held.u.arb_d.value != nullptr) {
            auto flat = arbitraryCalls(index).flatten(held.u.arb_d.value);
            if (flat.error != PF_Err_NONE) throw SimError("The effect failed to flatten a value.");
            param.flat = std::move(flat.value);
        }
        saved.params.push_back(std::move(param));
    }
    return saved;
}

void Instance::restore(const SavedEffect& saved) {
    for (const SavedParam& param : saved.params) {
        const std::optional<int> index = session_.params.indexOfId(param.id);
        if (!index || session_.params.at(*index).definition.param_type != param.type) continue;
        if (param.type == PF_Param_FLOAT_SLIDER) setSlider(*index, param.number);
        if (param.type != PF_Param_ARBITRARY_DATA) continue;
        if (!param.flat) {
            setNull(*index);
        } else if (unflatten(*index, *param.flat) != PF_Err_NONE) {
            throw SimError("The effect failed to unflatten a value.");
        }
    }
}

void Instance::copyFrom(const Instance* other) {
    const std::unique_lock lock(mutex_);
    for (const int index : session_.params.arbitraryIndices()) {
        const PF_ArbitraryH source = other == nullptr
                                         ? session_.params.at(index).definition.u.arb_d.dephault
                                         : other->arbitrary(index);
        const Answer<PF_ArbitraryH> made = arbitraryCalls(index).copy(source);
        if (made.error != PF_Err_NONE) throw SimError("The effect failed to copy a value.");
        replace(index, made.value);
    }
    if (other == nullptr) return;
    for (int index = 1; index < session_.params.count(); ++index) {
        if (values_[static_cast<std::size_t>(index)].param_type != PF_Param_FLOAT_SLIDER) continue;
        value(index, PF_Param_FLOAT_SLIDER).u.fs_d.value = other->slider(index);
    }
}

void Instance::disposeValues() {
    const std::unique_lock lock(mutex_);
    for (const int index : session_.params.arbitraryIndices()) {
        replace(index, nullptr);
    }
}

const PF_ParamDef& Instance::value(int index, PF_ParamType type) const {
    session_.params.at(index);
    const PF_ParamDef& held = values_[static_cast<std::size_t>(index)];
    if (held.param_type != type) {
        throw SimError("Parameter " + std::to_string(index) + " is not of the type asked for.");
    }
    return held;
}

PF_ParamDef& Instance::record(int index) {
    session_.params.at(index);
    return values_[static_cast<std::size_t>(index)];
}

PF_ParamDef& Instance::value(int index, PF_ParamType type) {
    return const_cast<PF_ParamDef&>(std::as_const(*this).value(index, type));
}

}  // namespace host_sim
