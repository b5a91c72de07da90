// Frames of clips as pictures, and back.
#pragma once

#include "tintwell_host/clips/av.h"
#include "tintwell_host/files/picture.h"

namespace program {

// How a clip's numbers become colours.
struct ClipColour {
    AVColorSpace matrix;
    bool fullRange;
    bool isAssumed;  // the clip's tags do not say the matrix
};

// What is usual for frames of this size that do not say it.
AVColorSpace usualMatrix(int width, int height);

// By the tags; without them the matrix is that of the picture's size, and the range limited unless
// the frames are RGB.
ClipColour colourOf(const AVCodecParameters& video);

// The depth in which frames of this format suffer no loss.
Depth depthOf(AVPixelFormat format);
bool hasAlpha(AVPixelFormat format);

// Threads: any. Throw Failure.
Picture pictureOf(const AVFrame& frame, const ClipColour& colour, Depth depth);
AvFrame frameOf(const Picture& picture, AVPixelFormat format, const ClipColour& colour);

}  // namespace program
