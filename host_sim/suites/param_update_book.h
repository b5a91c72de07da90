// Changes in the appearance of parameters, which "PF Param Utils Suite" is told.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "host_sim/suites/declared_params.h"
#include "host_sim/values/books.h"
#include "host_sim/values/refusals.h"

namespace host_sim {

// One accepted PF_UpdateParamUI.
struct ParamUpdate {
    int instance = 0;
    PF_ParamIndex index = 0;
    PF_ParamDef definition = {};  // as passed
    const char* label = nullptr;  // a button's text, in the effect's memory; else null
    std::string labelThen;        // what it said during the call
};

// Threads: every function from any thread. Lock order: before that of the books.
class ParamUpdateBook {
public:
    ParamUpdateBook(Books& books, Refusals& refusals, const DeclaredParams& params);

    PF_Err update(int instance, PF_ParamIndex index, const PF_ParamDef* definition);

    // Oldest first.
    std::vector<ParamUpdate> updates(int instance) const;
    // The text now behind the label pointer kept for a button, as a host paints it; `declared` when
    // the button was never updated. A text that changed since the call is a problem.
    std::string label(int instance, PF_ParamIndex index, const std::string& declared);

private:
    Books& books_;
    Refusals& refusals_;
    const DeclaredParams& params_;
    mutable std::mutex mutex_;
    std::vector<ParamUpdate> updates_;
};

}  // namespace host_sim
