// Fixture of the effect's tests: a home folder of their own, the real module in a simulated host,
// and the log that the effect leaves.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host_sim/host.h"
#include "tests/effect/tested_module.h"
#include "tests/support/temp_folder.h"

namespace effect_test {

using Lines = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

// Places of the parameters in the host's array.
inline constexpr int kAmount = 1;
inline constexpr int kLut = 2;
inline constexpr int kLutButton = 3;
inline constexpr int kEditButton = 4;

// Length of a log line's time and the two blanks after it.
inline constexpr std::size_t kStampLength = 21;

// The lines of a log file, each without its time; a line too short to have one is kept whole.
inline Lines readLog(const std::string& file) {
    Lines lines;
    std::istringstream text(twtest::readFile(file));
    for (std::string line; std::getline(text, line);)
        lines.push_back(line.size() < kStampLength ? line : line.substr(kStampLength));
    return lines;
}

// An out_data record in which whatever a command writes shows: no field is zero, but the message
// ends, as it must.
inline PF_OutData fullOutData() {
    PF_OutData out;
    std::memset(&out, 0x5A, sizeof out);
    out.return_msg[sizeof out.return_msg - 1] = '\0';
    return out;
}

inline bool sameBytes(const PF_OutData& a, const PF_OutData& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// At the end of each test the host closes, and what it has against the effect fails the test:
// handles left locked or never disposed of, suites not released, bytes written where none belong.
class EffectTest : public ::testing::Test {
protected:
    // Loads the module. Nothing is called yet.
    host_sim::Host& open(const host_sim::Personality& personality) {
        host = std::make_unique<host_sim::Host>(twtest::testedModule(), personality);
        return *host;
    }

    // A host that has registered and set up the effect, and one applied instance.
    host_sim::Instance& start(const host_sim::Personality& personality = host_sim::afterEffects()) {
        open(personality).start();
        return host->apply();
    }

    void close() {
        if (!host) return;
        host->outPreset() = {};
        host->refusals().clear();
        EXPECT_EQ(host->close(), Lines());
        host.reset();
    }

    void TearDown() override { close(); }

    // What was logged since the last call, or since the test began.
    Lines newLogLines() {
        const Lines all = readLog(logFile());
        const Lines fresh(all.begin() + static_cast<std::ptrdiff_t>(linesSeen_), all.end());
        linesSeen_ = all.size();
        return fresh;
    }

    std::string logFile() const { return home.dataFile("effect.log"); }

    const twtest::TempHome home;
    std::unique_ptr<host_sim::Host> host;

private:
    std::size_t linesSeen_ = 0;
};

}  // namespace effect_test
