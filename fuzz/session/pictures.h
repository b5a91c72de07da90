// Pictures of a session: worlds of any layout, and what a render must make of them.
#pragma once

#include "fuzz/session/reference.h"
#include "host_sim/values/frame.h"

namespace session_fuzz {

// A frame of the record's size, row bytes, place in memory and selected region.
host_sim::Frame makeFrame(Record& record, PrPixelFormat format);

// Random pixels; those of a wild float picture have any bits.
void fillWithNoise(host_sim::Frame& frame, std::uint64_t seed, bool isWild);

// How the effect takes a world's bytes.
struct Reading {
    bool isFloat = false;
    tw::ChannelOrder order = tw::kOrderBGRA;
};

// Renders `input` into `output` as the effect must, through the engine. The two may be one frame.
void paint(const Reading& reading, const std::optional<tw::Lut3D>& lut, float amount,
           const host_sim::Frame& input, host_sim::Frame& output);

}  // namespace session_fuzz
