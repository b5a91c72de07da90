// The commands of tintwell-host. Each prints its result on standard output and throws Failure, or
// what the simulated host throws, for wrong input.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tintwell_host/effect_session.h"

namespace program {

struct RenderOptions {
    EffectOptions effect;
    std::string in;
    std::string out;
    std::string lut;     // a .cube file
    std::string text;    // a file of TWLUT text
    std::string save;    // project to write; empty: none
    std::string depth;   // "8", "float"; empty: as the input file has it
    std::string frames;  // a set of frames; empty: all that exist
    std::optional<double> amount;
    std::string compression;       // as the output's format has it; empty: its default
    std::string progress = "bar";  // or "lines"
    std::string report;            // JSON to write; empty: none
    int threads = 0;               // frames in flight; 0: as many as processors
    int memory = 0;                // MiB for them; 0: a quarter of the machine's
    bool skipExisting = false;
};
void runRender(const RenderOptions& options);

struct PressOptions {
    EffectOptions effect;
    std::string button;  // "lut" or "edit"
    std::string save;    // project to write; empty: none
};
// The process must be an application already, so that the effect can show its dialogs.
void runPress(const PressOptions& options);

struct PatternOptions {
    EffectOptions effect;
    int size = 0;
    std::string frame;  // "1920x1080"
    std::string depth = "8";
    std::string out;
};
void runPattern(const PatternOptions& options);

struct MeasureOptions {
    EffectOptions effect;  // with a project: the look is sent into it
    std::string picture;   // the pattern after the grade
    int size = 0;
    std::string frame;  // "1920x1080", in which the pattern was drawn; empty: the picture's own
    std::int64_t id = 0;
    std::string name;
    std::string out;  // a .cube or .twlut file to write; empty: none
    bool json = false;
};
void runMeasure(const MeasureOptions& options);

struct RequestsOptions {
    bool once = false;  // only what lies there now
    bool json = false;
};
// Without `once` it never returns.
void runRequests(const RequestsOptions& options);

void runInspect(const EffectOptions& effect, const std::string& file);
void runEncode(const std::string& cube);
void runDecode(const std::string& text, const std::string& cube);
void runLog();

// The depth that a "--depth" asks for. Throws Failure for a host that cannot give it.
Depth chosenDepth(const std::string& depth, const std::string& host);

}  // namespace program
