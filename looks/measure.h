// The look in a picture of the calibration pattern: what a companion panel does after it has had
// the effect draw the pattern and somebody grade it.
//
// Each patch of the pattern shows one lattice point of the look, so its colour after the grade is
// the look's value there. Patches are found by the engine's own grid; a point is the mean of the
// middle half of the values inside its patch, away from edges that scaling and compression soften.
#pragma once

#include <string>
#include <vector>

#include "looks/picture_view.h"
#include "native/src/lut_engine.h"

namespace looks {

// The fewest pixels that a patch may be wide and high in the picture.
inline constexpr int kLeastPatchSide = 6;

struct PatternFrame {
    int size = 0;  // steps per channel, 2..64
    // Pixels of the frame in which the effect drew the pattern; 0: those of the picture, give or
    // take what scaling it to whole pixels rounds.
    int width = 0;
    int height = 0;
};

struct Measurement {
    tw::Lut3D lut;  // size and data; no id, no name
    int columns = 0;
    int rows = 0;
    // The smallest patch, in pixels of the picture, and how many of them a point is taken from.
    int patchWidth = 0;
    int patchHeight = 0;
    int pixelsRead = 0;
    // How far the pixels inside each patch scatter, as the standard deviation in the worst channel.
    // In lattice order, one for each point.
    std::vector<float> noise;
};

// Measures the picture of a pattern. False when it shows no pattern of that size, with one sentence
// in `reason` that says why and what to do; `measurement` is then to be discarded. Cropped pictures
// are not understood. With two or three steps there is little to tell a pattern by, and a soft
// picture of something else may pass. Threads: any. Throws only what memory exhaustion throws.
bool measurePattern(const Picture& picture, const PatternFrame& frame, Measurement& measurement,
                    std::string& reason);

}  // namespace looks
