// What the user asks of a rendering job.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tintwell_host/session/effect_session.h"

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
    // Of clips:
    std::string codec;           // empty: as the container has it
    std::optional<double> rate;  // frames a second of a clip that is made of a sequence; none: 24
    bool noAudio = false;
    bool strict = false;  // damaged frames are an error
};

// The depth in which the effect gets the frames; none: as the file has it. Throws Failure.
std::optional<Depth> depthFor(const RenderOptions& options);

// Bytes that the frames in flight may take, and what one of them takes at most.
std::int64_t memoryBytes(const RenderOptions& options);
std::int64_t frameBytes(std::int64_t pixels, Depth depth);

}  // namespace program
