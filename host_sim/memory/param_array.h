// The params argument of one command.
#pragma once

#include <memory>
#include <vector>

#include "host_api/parameters.h"
#include "host_sim/values/books.h"
#include "host_sim/values/guarded.h"

namespace host_sim {

// Full-size copies of an instance's definitions between canaries, and pointers to them with a null
// after the last.
//
// Threads: used by the one thread that sends the command.
class ParamArray {
public:
    ParamArray(const std::vector<PF_ParamDef>& values, Books& books);
    ParamArray(const ParamArray&) = delete;
    ParamArray& operator=(const ParamArray&) = delete;

    PF_ParamList list() { return pointers_.data(); }
    PF_ParamDef& operator[](int index) { return **params_[static_cast<std::size_t>(index)]; }
    int count() const { return static_cast<int>(params_.size()); }

    // Problems for damaged canaries and exchanged pointers, and, when values may not change, for
    // definitions that are not as they were handed over.
    void check(bool valuesMayChange);
    // Indices of the parameters whose change flags tell of a changed value; an edited definition
    // without the flag is a problem, and so is any other flag beside it.
    std::vector<int> changed();

private:
    Books& books_;
    std::vector<std::unique_ptr<Guarded<PF_ParamDef>>> params_;
    std::vector<PF_ParamDef*> pointers_;
};

}  // namespace host_sim
