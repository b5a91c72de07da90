// What the threads use: pictures, contents of the LUT parameter and .cube files, each with its
// expected results, computed by one thread beforehand.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "effect/lut_file.h"
#include "host_sim/values/frame.h"
#include "native/src/lut_engine.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/temp_folder.h"

namespace stress {

// Values of the Amount slider.
inline constexpr std::array<int, 3> kPercents = {100, 40, 0};

// A content of the LUT parameter.
struct Look {
    twtest::Bytes bytes;  // none: the parameter has no handle
    std::string text;     // as PRINT gives it
    std::string failure;  // why the text cannot be read; empty: it can
    tw::Lut3D lut;        // of no size and without a pattern: none
    std::string label;
    // By scene, then by percent.
    std::vector<std::array<host_sim::Frame, kPercents.size()>> pictures;

    bool isNone() const { return lut.size == 0 && lut.probe == 0; }
};

// A file that the user picks.
struct CubeFile {
    std::string path;
    tw::LutFileResult result = tw::LutFileResult::kUnreadable;
    std::string reason;  // why it is unreadable
    Look look;           // of a loaded one
};

// Never changes once it is made. Threads: any.
class Inputs {
public:
    Inputs();

    // Input frames in all formats of Premiere Pro, of rows for one thread and for several.
    const std::vector<host_sim::Frame>& scenes() const { return scenes_; }
    // Those of floats: a GPU's.
    const std::vector<std::size_t>& floatScenes() const { return floatScenes_; }
    // More LUTs than the effect keeps decoded, the pattern, no LUT, what cannot be read, no handle.
    const std::vector<Look>& looks() const { return looks_; }
    const std::vector<CubeFile>& files() const { return files_; }

private:
    Look lookOf(const twtest::Bytes& bytes) const;
    host_sim::Frame pictureOf(const tw::Lut3D& lut, const host_sim::Frame& input,
                              int percent) const;
    void addFile(const std::string& name, const std::string& contents);

    twtest::TempFolder folder_;
    std::vector<host_sim::Frame> scenes_;
    std::vector<std::size_t> floatScenes_;
    std::vector<Look> looks_;
    std::vector<CubeFile> files_;
};

// The same LUT under another name.
Look renamed(Look look, const std::string& name);

// A frame like `input` that nothing has been drawn into yet.
host_sim::Frame blank(const host_sim::Frame& input);

}  // namespace stress
