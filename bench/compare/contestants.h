// The programs that grade the same frame in bench/compare.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/scenes.h"

namespace bench {

// One way to grade (or copy) the picture. run() returns the seconds of processor time that it takes
// once, whatever else this machine is busy with.
struct Contestant {
    std::string name;
    std::function<double()> run;
};

// What all of them are given: one picture, float and 8 bits, and one LUT, in memory and as a file.
struct Contest {
    int calls;  // how often a picture that takes microseconds is done for one run()
    tw::Lut3D lut;
    std::string cubePath;
    FrameF floatSrc, floatDst;
    Frame8 byteSrc, byteDst;
};

// Processor time of this thread.
double threadSeconds();

// The time of one call of `work` out of so many.
template <typename Work>
double timed(int calls, Work work) {
    const double start = threadSeconds();
    for (int i = 0; i < calls; ++i)
        work();
    return (threadSeconds() - start) / calls;
}

// memcpy, and apply8 and applyF with every row kernel that this machine can run, on one thread at
// an Amount of 0.8.
void addOurs(Contest& contest, std::vector<Contestant>& floats, std::vector<Contestant>& bytes);
// OpenColorIO's library with tetrahedral interpolation; it has no Amount.
void addOpenColorIO(Contest& contest, std::vector<Contestant>& floats,
                    std::vector<Contestant>& bytes);
// The program ffmpeg with its filter lut3d on one thread, less the time it takes to pass the same
// frames on untouched; nothing is added where there is no such program, nor for a single row, which
// is nothing beside what the program does for each frame. No Amount either.
void addFfmpeg(Contest& contest, std::vector<Contestant>& floats, std::vector<Contestant>& bytes);

}  // namespace bench
