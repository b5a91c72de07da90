// What a session can do, one host command or a few that belong together. Each plays it, says what
// must come of it, and holds the effect to that.
#pragma once

#include "fuzz/session/stage.h"

namespace session_fuzz {

struct Command {
    char letter;
    const char* name;
    void (*play)(Stage&, Record&);
};

// The command that a byte names: its letter, or by its remainder any other byte.
const Command& commandOf(std::uint8_t byte);

// The LUT parameter's data: values.cpp.
void create(Stage& stage, Record& record);
void copy(Stage& stage, Record& record);
void dispose(Stage& stage, Record& record);
void flatten(Stage& stage, Record& record);
void unflatten(Stage& stage, Record& record);
void interpolate(Stage& stage, Record& record);
void compare(Stage& stage, Record& record);
void print(Stage& stage, Record& record);
void scan(Stage& stage, Record& record);
void unknownSelector(Stage& stage, Record& record);

// Instances and their values from outside the effect: instances.cpp.
void apply(Stage& stage, Record& record);
void duplicate(Stage& stage, Record& record);
void remove(Stage& stage, Record& record);
void saveAndLoad(Stage& stage, Record& record);
void setAmount(Stage& stage, Record& record);
void setBytes(Stage& stage, Record& record);
void setNull(Stage& stage, Record& record);
void otherCommand(Stage& stage, Record& record);

// The buttons: presses.cpp.
void pressLutButton(Stage& stage, Record& record);
void pressEditButton(Stage& stage, Record& record);
void pressNothing(Stage& stage, Record& record);
void updateLabel(Stage& stage, Record& record);
void nameLutFolder(Stage& stage, Record& record);

void render(Stage& stage, Record& record);  // renders.cpp

// Two at most in a session, as they take their time: gpu.cpp, or gpu_none.cpp without the
// software device.
void renderOnGpu(Stage& stage, Record& record);

// The host refuses something in the next command: refusals.cpp.
void refuse(Stage& stage, Record& record);
void endRefusals(Stage& stage);

}  // namespace session_fuzz
