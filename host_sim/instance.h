// One applied effect with its parameter values.
#pragma once

#include <atomic>
#include <cstdint>
#include <shared_mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host_sim/arbitrary_calls.h"
#include "host_sim/command.h"
#include "host_sim/suites/param_update_book.h"
#include "host_sim/values/frame.h"
#include "host_sim/values/project.h"

namespace host_sim {

// Made and ended by Host. Indices are those of the params array: 0 is the input layer. A wrong
// index or a parameter of the wrong type throws SimError everywhere.
//
// Threads: every function from any thread, several renders of one instance at once included, which
// is more than Premiere Pro does. A command that may change values has the instance to itself.
class Instance {
public:
    Instance(Session& session, int number);
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    // From 1, in the order of applying.
    int number() const { return number_; }

    // FRAME_SETUP, RENDER and FRAME_SETDOWN of one frame; the result is RENDER's, or FRAME_SETUP's
    // when that failed. The frames' formats are what the host tells the effect; nothing keeps a
    // test from handing over a format that was not negotiated. Input and output may be one frame
    // (in place). Problems: a byte written outside the output, or in the input.
    CommandResult render(const Frame& input, Frame& output, const RenderSettings& settings = {});

    // USER_CHANGED_PARAM, as when the user presses a button. Values that the effect changed and
    // flagged are taken over, and a UI refresh that it asks for follows as updateUi().
    CommandResult press(int index);
    // The same with a null extra record.
    CommandResult pressWithoutRecord();
    CommandResult updateUi();
    // Whether the picture last rendered, if any, is out of date: a value has changed since, or the
    // effect asked for a new one.
    bool needsRender() const { return needsRender_; }
    // Any other command with params and without an output world.
    CommandResult command(PF_Cmd command, void* extra = nullptr);

    double slider(int index) const;
    void setSlider(int index, double value);

    // The arbitrary value, the host's; null when there is none. The handle may be another one after
    // a command that may change values.
    PF_ArbitraryH arbitrary(int index) const;
    // For calls on other handles than the instance's own.
    ArbitraryCalls arbitraryCalls(int index) const;
    Answer<std::vector<std::uint8_t>> flatten(int index) const;
    Answer<std::string> print(int index) const;
    // Both put the effect's new value in place of the old one, which is disposed of through the
    // effect; on an error the old value stays.
    PF_Err unflatten(int index, const std::vector<std::uint8_t>& bytes);
    PF_Err scan(int index, std::string_view text);
    // Puts a handle with just these bytes in place, as somebody other than the effect may do.
    void setBytes(int index, const std::vector<std::uint8_t>& bytes);
    // Leaves a null handle.
    void setNull(int index);

    // The parameter's record as the effect is given it, for tests that change what is the host's.
    PF_ParamDef& record(int index);

    // What a button says now, and the calls that made it so.
    std::string label(int index) const;
    std::vector<ParamUpdate> updates() const;

    // The values in their saved form, flattened through the effect. Throws SimError on an error.
    SavedEffect save(const std::string& matchName) const;

private:
    friend class Host;

    // Copies the values of another instance, or the defaults.
    void copyFrom(const Instance* other);
    void restore(const SavedEffect& saved);
    void disposeValues();
    CommandResult sendWith(const std::vector<PF_ParamDef>& values, Request request) const;
    CommandResult sendPress(void* extra);
    CommandResult renderLocked(const Frame& input, Frame& output, const RenderSettings& settings);
    void takeOver(ParamArray& params, const std::vector<int>& changed);
    void replace(int index, PF_ArbitraryH handle);
    const PF_ParamDef& value(int index, PF_ParamType type) const;
    PF_ParamDef& value(int index, PF_ParamType type);

    Session& session_;
    int number_;
    mutable std::shared_mutex mutex_;  // shared: values are read and stay. Taken before all others.
    std::vector<PF_ParamDef> values_;
    std::atomic<bool> needsRender_{true};
};

}  // namespace host_sim
