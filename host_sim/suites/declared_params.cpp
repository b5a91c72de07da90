#include "host_sim/suites/declared_params.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "host_sim/values/call_scope.h"
#include "host_sim/values/error.h"

namespace host_sim {
namespace {

// Bytes of the union that a parameter type uses; 0 for a type that is not simulated.
std::size_t usedBytes(PF_ParamType type) {
    switch (type) {
        case PF_Param_FLOAT_SLIDER:
            return sizeof(PF_FloatSliderDef);
        case PF_Param_ARBITRARY_DATA:
            return sizeof(PF_ArbitraryDef);
        case PF_Param_BUTTON:
            return sizeof(PF_ButtonDef);
        default:
            return 0;
    }
}

bool restIsCleared(const PF_ParamDef& definition) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(&definition.u);
    return definition.unused == 0 &&
           std::all_of(bytes + usedBytes(definition.param_type), bytes + sizeof(definition.u),
                       [](unsigned char byte) { return byte == 0; });
}

bool isTerminated(const PF_ParamDef& definition) {
    return std::memchr(definition.name, 0, sizeof(definition.name)) != nullptr;
}

}  // namespace

DeclaredParams::DeclaredParams(Books& books, Refusals& refusals, HandleMemory& handles,
                               const Personality& personality)
    : books_(books), refusals_(refusals), handles_(handles), personality_(personality) {
    params_.push_back(std::make_unique<DeclaredParam>());  // the input layer
}

PF_Err DeclaredParams::add(PF_ParamIndex index, const PF_ParamDef* definition) {
    const CallScope* scope = CallScope::current();
    if (scope == nullptr || scope->command() != PF_Cmd_PARAMS_SETUP) {
        books_.problem("add_param was called outside PF_Cmd_PARAMS_SETUP");
        return PF_Err_INVALID_CALLBACK;
    }
    if (definition == nullptr) {
        books_.problem("add_param was given a null definition");
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (index != -1) {
        books_.problem("add_param was given the index " + std::to_string(index) +
                       ", but parameters can only be appended (-1)");
        return PF_Err_INVALID_INDEX;
    }
    check(*definition);
    const PF_ArbitraryH arbitraryDefault =
        definition->param_type == PF_Param_ARBITRARY_DATA ? definition->u.arb_d.dephault : nullptr;
    if (const PF_Err error = refusals_.answer(Refusal::kAddParam)) {
        refusedDefaults_.push_back(arbitraryDefault);
        return error;
    }
    append(*definition);
    return PF_Err_NONE;
}

void DeclaredParams::append(const PF_ParamDef& definition) {
    auto param = std::make_unique<DeclaredParam>();
    param->definition = definition;
    if (definition.param_type == PF_Param_ARBITRARY_DATA) {
        param->definition.u.arb_d.value = nullptr;
    }
    if (definition.param_type == PF_Param_BUTTON) {
        const char* text = definition.u.button_d.u.namesptr;
        param->label = text == nullptr ? "" : text;
        param->definition.u.button_d.u.namesptr = param->label.c_str();
    }
    params_.push_back(std::move(param));
}

void DeclaredParams::finish(PF_Err error, A_long numParams) {
    for (PF_ArbitraryH handle : std::exchange(refusedDefaults_, {}))
        handles_.hostDispose(handle);
    if (error == PF_Err_NONE && numParams != count()) {
        books_.problemAtEnd("PF_Cmd_PARAMS_SETUP answered num_params " + std::to_string(numParams) +
                            ", but with the input layer there are " + std::to_string(count()));
    }
}

const DeclaredParam& DeclaredParams::at(int index) const {
    if (index < 0 || index >= count()) {
        throw SimError("The effect has no parameter " + std::to_string(index) + ".");
    }
    return *params_[static_cast<std::size_t>(index)];
}

int DeclaredParams::indexOfType(PF_ParamType type) const {
    for (int index = 1; index < count(); ++index) {
        if (at(index).definition.param_type == type) return index;
    }
    throw SimError("The effect has no parameter of type " + std::to_string(type) + ".");
}

std::optional<int> DeclaredParams::indexOfId(A_long id) const {
    for (int index = 1; index < count(); ++index) {
        if (at(index).definition.uu.id == id) return index;
    }
    return std::nullopt;
}

std::vector<int> DeclaredParams::arbitraryIndices() const {
    std::vector<int> indices;
    for (int index = 1; index < count(); ++index) {
        if (at(index).definition.param_type == PF_Param_ARBITRARY_DATA) indices.push_back(index);
    }
    return indices;
}

void DeclaredParams::check(const PF_ParamDef& definition) {
    if (!isTerminated(definition)) {
        books_.problem("add_param was given a name without an end");
        return;
    }
    if (usedBytes(definition.param_type) == 0) {
        problem(definition,
                "is of type " + std::to_string(definition.param_type) + ", which is not simulated");
        return;
    }
    if (!restIsCleared(definition)) problem(definition, "was not cleared before it was filled");
    if (indexOfId(definition.uu.id)) problem(definition, "has the id of an earlier one");
    if (definition.param_type == PF_Param_FLOAT_SLIDER) checkSlider(definition);
    if (definition.param_type == PF_Param_ARBITRARY_DATA) checkArbitrary(definition);
    const bool supervised = (definition.flags & PF_ParamFlag_SUPERVISE) != 0;
    if (definition.param_type == PF_Param_BUTTON && !supervised) {
        problem(definition, "is a button, but not supervised");
    }
}

void DeclaredParams::checkSlider(const PF_ParamDef& definition) {
    const PF_FloatSliderDef& slider = definition.u.fs_d;
    const bool ordered = slider.valid_min <= slider.slider_min &&
                         slider.slider_min < slider.slider_max &&
                         slider.slider_max <= slider.valid_max;
    const bool inside = slider.valid_min <= slider.dephault && slider.dephault <= slider.valid_max;
    if (!ordered || !inside) problem(definition, "has ranges or a default that do not fit");
}

void DeclaredParams::checkArbitrary(const PF_ParamDef& definition) {
    const PF_ArbitraryDef& arbitrary = definition.u.arb_d;
    if (arbitrary.value != nullptr) problem(definition, "has a value, which must be null");
    if (arbitrary.dephault != nullptr && !handles_.isLive(arbitrary.dephault)) {
        problem(definition, "has a default that is no handle");
    }
    constexpr PF_ParamUIFlags kOneOf = PF_PUI_TOPIC | PF_PUI_CONTROL | PF_PUI_NO_ECW_UI;
    if (!personality_.isPremiere() && (definition.ui_flags & kOneOf) == 0) {
        problem(definition, "is arbitrary data without any of the UI flags it needs");
    }
}

void DeclaredParams::problem(const PF_ParamDef& definition, const std::string& what) {
    books_.problem("Parameter \"" + std::string(definition.name) + "\" " + what);
}

}  // namespace host_sim
