// The programs that grade the same frame in bench/compare.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/scenes.h"

namespace bench {

// One way to grade (or copy) the frame. run() does it once and returns the seconds of processor
// time that it took, whatever else this machine is busy with.
struct Contestant {
    std::string name;
    std::function<double()> run;
};

// What all of them are given: one frame, float and 8 bits, and one LUT, in memory and as a file.
struct Contest {
    tw::Lut3D lut;
    std::string cubePath;
    FrameF floatSrc, floatDst;
    Frame8 byteSrc, byteDst;
};

// Processor time of this thread, for run().
double threadSeconds();

// memcpy and every row kernel that this machine can run, at an Amount of 0.8.
void addOurs(Contest& contest, std::vector<Contestant>& floats, std::vector<Contestant>& bytes);
// OpenColorIO's library with tetrahedral interpolation; it has no Amount.
void addOpenColorIO(Contest& contest, std::vector<Contestant>& floats,
                    std::vector<Contestant>& bytes);
// The program ffmpeg with its filter lut3d on one thread, less the time it takes to pass the same
// frames on untouched; nothing is added where there is no such program. No Amount either.
void addFfmpeg(Contest& contest, std::vector<Contestant>& floats, std::vector<Contestant>& bytes);

}  // namespace bench
