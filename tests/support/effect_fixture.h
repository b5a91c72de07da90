// Fixture of the effect's tests: a home folder of their own, the real module in a simulated host,
// and the log that the effect leaves.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "host_sim/host.h"
#include "tests/support/effect_log.h"
#include "tests/support/parameter_indices.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tested_module.h"

namespace twtest {

using Bytes = std::vector<std::uint8_t>;

// The out-flags of a press that has stored a new value.
inline constexpr PF_OutFlags kRefresh = PF_OutFlag_REFRESH_UI | PF_OutFlag_FORCE_RERENDER;

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
    host_sim::Host& openHost(const host_sim::Personality& personality,
                             const std::string& module = testedModule()) {
        host = std::make_unique<host_sim::Host>(module, personality);
        return *host;
    }

    // A host that has registered and set up the effect, and one applied instance.
    host_sim::Instance& start(const host_sim::Personality& personality = host_sim::afterEffects()) {
        openHost(personality).start();
        return host->apply();
    }

    void closeHost() {
        if (!host) return;
        host->outPreset() = {};
        host->refusals().clear();
        EXPECT_EQ(host->close(), Lines());
        host.reset();
    }

    void TearDown() override { closeHost(); }

    // What was logged since the last call, or since the test began.
    Lines newLogLines() {
        const Lines all = logLines(home);
        const Lines fresh(all.begin() + static_cast<std::ptrdiff_t>(linesSeen_), all.end());
        linesSeen_ = all.size();
        return fresh;
    }

    std::string logFile() const { return home.dataFile("effect.log"); }

    const TempHome home;
    std::unique_ptr<host_sim::Host> host;

private:
    std::size_t linesSeen_ = 0;
};

}  // namespace twtest
