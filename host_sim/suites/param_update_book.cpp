#include "host_sim/suites/param_update_book.h"

#include "host_sim/values/call_scope.h"

namespace host_sim {
namespace {

bool mayUpdate() {
    const CallScope* scope = CallScope::current();
    if (scope == nullptr) return false;
    const PF_Cmd command = scope->command();
    return command == PF_Cmd_UPDATE_PARAMS_UI || command == PF_Cmd_USER_CHANGED_PARAM ||
           command == PF_Cmd_EVENT;
}

// What is wrong with the arguments; empty when nothing is.
std::string fault(const DeclaredParams& params, PF_ParamIndex index,
                  const PF_ParamDef* definition) {
    if (index < 1 || index >= params.count()) return "index " + std::to_string(index);
    if (definition == nullptr) return "a null definition";
    if (definition->param_type != params.at(index).definition.param_type) {
        return "a definition of another parameter type";
    }
    return "";
}

}  // namespace

ParamUpdateBook::ParamUpdateBook(Books& books, Refusals& refusals, const DeclaredParams& params)
    : books_(books), refusals_(refusals), params_(params) {}

PF_Err ParamUpdateBook::update(int instance, PF_ParamIndex index, const PF_ParamDef* definition) {
    if (!mayUpdate()) books_.problem("PF_UpdateParamUI was called in a command that forbids it");
    if (const std::string wrong = fault(params_, index, definition); !wrong.empty()) {
        books_.problem("PF_UpdateParamUI was given " + wrong);
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (const PF_Err error = refusals_.answer(Refusal::kParamUpdate)) return error;
    ParamUpdate update{instance, index, *definition, nullptr, ""};
    if (definition->param_type == PF_Param_BUTTON) {
        update.label = definition->u.button_d.u.namesptr;
        update.labelThen = update.label == nullptr ? "" : update.label;
    }
    const std::lock_guard lock(mutex_);
    updates_.push_back(update);
    return PF_Err_NONE;
}

std::vector<ParamUpdate> ParamUpdateBook::updates(int instance) const {
    const std::lock_guard lock(mutex_);
    std::vector<ParamUpdate> mine;
    for (const ParamUpdate& update : updates_) {
        if (update.instance == instance) mine.push_back(update);
    }
    return mine;
}

std::string ParamUpdateBook::label(int instance, PF_ParamIndex index, const std::string& declared) {
    const std::vector<ParamUpdate> mine = updates(instance);
    for (auto update = mine.rbegin(); update != mine.rend(); ++update) {
        if (update->index != index || update->label == nullptr) continue;
        const std::string now = update->label;
        if (now != update->labelThen) {
            books_.problem("The text \"" + update->labelThen + "\" of parameter " +
                           std::to_string(index) + " has become \"" + now +
                           "\" behind its pointer");
        }
        return now;
    }
    return declared;
}

}  // namespace host_sim
