// The commands of tintwell-host. Each prints its result on standard output and throws Failure, or
// what the simulated host throws, for wrong input.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tintwell_host/jobs/render_options.h"
#include "tintwell_host/session/effect_session.h"

namespace program {

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
// Throws Failure for pictures of two sizes, and for a value that is further apart than `within`.
void runCompare(const std::string& fileA, const std::string& fileB, double within);

}  // namespace program
