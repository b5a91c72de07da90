#include "host_sim/memory/param_array.h"

#include <cstring>

namespace host_sim {

ParamArray::ParamArray(const std::vector<PF_ParamDef>& values, Books& books) : books_(books) {
    for (const PF_ParamDef& value : values) {
        params_.push_back(std::make_unique<Guarded<PF_ParamDef>>(value));
        pointers_.push_back(params_.back()->get());
    }
    pointers_.push_back(nullptr);
}

void ParamArray::check(bool valuesMayChange) {
    for (std::size_t i = 0; i < params_.size(); ++i) {
        const std::string name = "parameter " + std::to_string(i);
        if (pointers_[i] != params_[i]->get())
            books_.problem("The pointer to " + name + " changed");
        if (!params_[i]->isIntact()) books_.problem("Bytes beside " + name + " were overwritten");
        if (!valuesMayChange && !params_[i]->isUnchanged()) {
            books_.problem("The definition of " + name + " was changed");
        }
    }
    if (pointers_.back() != nullptr) books_.problem("The end of the params array was overwritten");
}

std::vector<int> ParamArray::changed() {
    std::vector<int> indices;
    for (std::size_t i = 0; i < params_.size(); ++i) {
        Guarded<PF_ParamDef>& param = *params_[i];
        const PF_ChangeFlags flags = param->uu.change_flags;
        if ((flags & PF_ChangeFlag_CHANGED_VALUE) != 0) {
            indices.push_back(static_cast<int>(i));
            if (flags != PF_ChangeFlag_CHANGED_VALUE) {
                books_.problem("Parameter " + std::to_string(i) + " has the change flags " +
                               std::to_string(flags));
            }
        } else if (!param.isUnchanged()) {
            books_.problem("Parameter " + std::to_string(i) +
                           " was edited, but not flagged as changed");
        }
    }
    return indices;
}

}  // namespace host_sim
