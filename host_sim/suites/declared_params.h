// The parameters that an effect declared.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host_api/errors.h"
#include "host_api/parameters.h"
#include "host_sim/memory/handle_memory.h"
#include "host_sim/values/books.h"
#include "host_sim/values/personality.h"
#include "host_sim/values/refusals.h"

namespace host_sim {

struct DeclaredParam {
    PF_ParamDef definition = {};  // a button's text pointer leads to `label`
    std::string label;            // a button's text
};

// Filled in PARAMS_SETUP through add_param, constant from then on. Breaches of the rules for
// definitions are problems.
//
// Threads: adding from one thread; reading from any thread once adding is over.
class DeclaredParams {
public:
    DeclaredParams(Books& books, Refusals& refusals, HandleMemory& handles,
                   const Personality& personality);

    // The add_param callback. The host owns an arbitrary default when it returns 0.
    PF_Err add(PF_ParamIndex index, const PF_ParamDef* definition);
    // At the end of PARAMS_SETUP: frees the arbitrary defaults of definitions that were refused,
    // unless the effect did; checks the number of parameters when the command succeeded.
    void finish(PF_Err error, A_long numParams);

    // With the input layer, which is index 0.
    int count() const { return static_cast<int>(params_.size()); }
    // Throws SimError for an index that is not declared.
    const DeclaredParam& at(int index) const;
    // Index of the first parameter of a type. Throws SimError when there is none.
    int indexOfType(PF_ParamType type) const;
    std::optional<int> indexOfId(A_long id) const;
    std::vector<int> arbitraryIndices() const;

private:
    void append(const PF_ParamDef& definition);
    void check(const PF_ParamDef& definition);
    void checkSlider(const PF_ParamDef& definition);
    void checkArbitrary(const PF_ParamDef& definition);
    void problem(const PF_ParamDef& definition, const std::string& what);

    Books& books_;
    Refusals& refusals_;
    HandleMemory& handles_;
    const Personality& personality_;
    std::vector<std::unique_ptr<DeclaredParam>> params_;  // texts keep their addresses
    std::vector<PF_ArbitraryH> refusedDefaults_;
};

}  // namespace host_sim
