// What a session can do, one host command or a few that belong together. Each runs it and
// compares the effect with the reference.
#pragma once

#include "fuzz/session/session_state.h"

namespace session_fuzz {

struct Step {
    char letter;
    const char* name;
    void (*run)(SessionState&, Record&);
};

// The command that a byte names: its letter, or by its remainder any other byte.
const Step& stepOf(std::uint8_t byte);

// The LUT parameter's data: values.cpp.
void create(SessionState& session, Record& record);
void copy(SessionState& session, Record& record);
void dispose(SessionState& session, Record& record);
void flatten(SessionState& session, Record& record);
void unflatten(SessionState& session, Record& record);
void interpolate(SessionState& session, Record& record);
void compare(SessionState& session, Record& record);
void print(SessionState& session, Record& record);
void scan(SessionState& session, Record& record);
void unknownSelector(SessionState& session, Record& record);

// Instances and their values from outside the effect: instances.cpp.
void apply(SessionState& session, Record& record);
void duplicate(SessionState& session, Record& record);
void remove(SessionState& session, Record& record);
void saveAndLoad(SessionState& session, Record& record);
void setAmount(SessionState& session, Record& record);
void setBytes(SessionState& session, Record& record);
void setNull(SessionState& session, Record& record);
void otherCommand(SessionState& session, Record& record);

// The buttons: presses.cpp.
void pressLutButton(SessionState& session, Record& record);
void pressEditButton(SessionState& session, Record& record);
void pressNothing(SessionState& session, Record& record);
void updateLabel(SessionState& session, Record& record);
void nameLutFolder(SessionState& session, Record& record);

void render(SessionState& session, Record& record);  // renders.cpp

// Two at most in a session, as they take their time: gpu.cpp, or gpu_none.cpp without the
// software device.
void renderOnGpu(SessionState& session, Record& record);

// The host refuses something in the next command: refusals.cpp.
void refuse(SessionState& session, Record& record);
void endRefusals(SessionState& session);

}  // namespace session_fuzz
