// Sends commands to an effect's entry point and checks what comes back.
#pragma once

#include <string>
#include <vector>

#include "host_api/registration.h"
#include "host_sim/memory/param_array.h"

namespace host_sim {

class Session;

// Moment and manner of a render, as in_data tells them.
struct RenderSettings {
    A_long time = 0;  // in units of 1 / timeScale seconds, as are the next two
    A_long timeStep = 1;
    A_long totalTime = 250;
    A_u_long timeScale = 25;
    PF_Field field = PF_Field_FRAME;
    PF_Quality quality = PF_Quality_HI;
};

struct Request {
    PF_Cmd command = 0;
    int instance = 0;
    PF_ProgPtr effectRef = nullptr;
    ParamArray* params = nullptr;   // null: the effect gets none
    PF_LayerDef* output = nullptr;  // null: the effect gets none
    void* extra = nullptr;
    PF_FunctionSelector selector = -1;  // of PF_Cmd_ARBITRARY_CALLBACK
    RenderSettings settings = {};
    A_long width = 0;  // of the picture; 0 without one
    A_long height = 0;
};

struct CommandResult {
    PF_Err error = 0;
    PF_OutData out = {};       // as the effect left it
    std::vector<int> changed;  // parameters whose new values the host took over

    // out.return_msg, which the hosts show in a box unless it is empty.
    std::string message() const;
};

// Whether parameter values may change in a command.
bool mayChangeValues(PF_Cmd command);

// Words for a request in the books: "PF_Cmd_RENDER of instance 1".
std::string describeRequest(const Request& request);

// Sends one command with in_data and out_data of its own, both between canaries. A changed in_data,
// damaged canaries, changed parameters and an exception (answered as error -1) are problems. What
// the effect answers is not judged. Holds no lock of the simulator during the call.
//
// Threads: any.
CommandResult send(Session& session, const Request& request);

}  // namespace host_sim
