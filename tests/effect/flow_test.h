// What the tests of the buttons and the label share: an applied effect in the simulated host, a
// home of its own, and stand-ins for the dialogs.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host_sim/host.h"
#include "tests/effect/stand_in_dialogs.h"
#include "tests/support/temp_folder.h"

namespace twtest {

enum Index { kAmount = 1, kLut = 2, kLutButton = 3, kEditButton = 4 };

// The flags of a press that has stored a new value.
inline constexpr PF_OutFlags kRefresh = PF_OutFlag_REFRESH_UI | PF_OutFlag_FORCE_RERENDER;

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

// The bytes that a parameter holding this text has: 16-bit units.
Bytes stored(const std::string& text);

// A .cube text of `size` points per axis: the given lines, then the values 0 and 1 by turns.
std::string cube(int size, const std::string& lines = "");
// The same padded with a comment to exactly that many bytes.
std::string cubeOfBytes(int size, std::size_t bytes);

// The lines of a log without their times, less those of the data callbacks.
Lines logLines(const std::string& text);

class FlowTest : public testing::Test {
protected:
    FlowTest();

    // A file in the home; the folders on the way are made.
    std::string write(const std::string& name, const std::string& contents) const;
    std::string path(const std::string& name) const { return home_ / name; }
    std::string dataPath(const std::string& name) const { return home_.dataFile(name); }

    // What was logged since the last call, without the times.
    Lines log();

    // Presses the LUT button and picks that file.
    host_sim::CommandResult pickFile(const std::string& path);

    host_sim::Host& host() { return *host_; }
    host_sim::Instance& effect() { return *effect_; }
    StandInDialogs& dialogs() { return *dialogs_; }
    Bytes lutBytes() { return host().handles().contents(effect().arbitrary(kLut)); }
    std::string label() { return effect().label(kLutButton); }

private:
    TempHome home_;
    std::unique_ptr<host_sim::Host> host_;
    host_sim::Instance* effect_ = nullptr;
    StandInDialogs* dialogs_ = nullptr;
    std::size_t logRead_ = 0;
};

}  // namespace twtest
