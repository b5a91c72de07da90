// The effect as the commands use it: one simulated host with one applied instance.
#pragma once

#include <optional>
#include <string>

#include "host_sim/host.h"
#include "tintwell_host/files/picture.h"
#include "tintwell_host/session/gpu_session.h"

namespace program {

struct EffectOptions {
    std::string module;             // the loadable module; empty: beside this program
    std::string host = "premiere";  // or "ae"
    std::string project;            // values to begin with; empty: the effect's defaults
    bool gpu = false;               // through the GPU filter: Premiere Pro and float only
};

// Threads: one at a time, but for render(). All functions throw Failure, and what the simulated
// host throws.
class EffectSession {
public:
    explicit EffectSession(const EffectOptions& options);

    // Stores a TWLUT text through the host's scan callback. `origin` names it in messages.
    void scan(const std::string& text, const std::string& origin);
    void setAmount(double percent);
    // The stored TWLUT text, printed by the effect.
    std::string storedText();
    double amount() const;

    // Presses a button, 0 being the first that the effect declares, and returns when the effect has
    // closed the dialogs that it showed.
    void press(int button);
    // What that button says.
    std::string label(int button) const;

    // The picture as the effect renders it, in the picture's own depth. Threads: any; a GPU renders
    // one picture at a time.
    Picture render(Picture picture);

    void save(const std::string& project);
    // Ends the session; a breach of the host's rules by the effect is a failure too.
    void close();

    host_sim::Host& host() { return host_; }

private:
    int buttonIndex(int button) const;
    PF_Err renderFrame(const host_sim::Frame& input, host_sim::Frame& output);

    host_sim::Host host_;
    std::optional<GpuSession> gpu_;
    host_sim::Instance& effect_;
    int amountIndex_;
    int lutIndex_;
};

// The depth that a "--depth" asks for. Throws Failure for a host that cannot give it.
Depth chosenDepth(const std::string& depth, const std::string& host);

}  // namespace program
