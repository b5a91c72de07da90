// Fixture of the tests of the LUT parameter's data: a host without instances, and values of its
// own.
#pragma once

#include <string>
#include <vector>

#include "host_sim/arbitrary_calls.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/texts.h"

namespace twtest {

// The bytes of a simulated host's fresh handles and buffers.
inline constexpr std::uint8_t kFreshHandleByte = 0xA7;
inline constexpr std::uint8_t kFreshBufferByte = 0xCD;

class ArbitraryTest : public EffectTest {
protected:
    void SetUp() override {
        openHost(host_sim::afterEffects()).start();
        newLogLines();
    }

    // Values are disposed of through the effect, so that a lock it left on one is noticed.
    void TearDown() override {
        host->refusals().clear();
        for (PF_ArbitraryH handle : held_)
            calls().dispose(handle);
        EffectTest::TearDown();
    }

    host_sim::ArbitraryCalls calls() { return host->arbitraryCalls(kLut); }

    // A value that the host holds.
    PF_ArbitraryH holding(const Bytes& bytes) {
        held_.push_back(host->handles().hostAllocate(bytes));
        return held_.back();
    }
    PF_ArbitraryH holding(const std::string& text) { return holding(widened(text)); }

    // The bytes of a handle that the effect made; the handle becomes one that the host holds.
    Bytes contents(const host_sim::Answer<PF_ArbitraryH>& answer) {
        EXPECT_EQ(answer.error, 0);
        EXPECT_NE(answer.value, nullptr);
        if (answer.value == nullptr) return {};
        held_.push_back(answer.value);
        return host->handles().contents(answer.value);
    }

    host_sim::HandleCounts counts() { return host->handles().counts(); }

private:
    std::vector<PF_ArbitraryH> held_;
};

inline Bytes unfilled(std::size_t size) {
    return Bytes(size, kFreshHandleByte);
}

}  // namespace twtest
