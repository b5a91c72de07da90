// The values that the module registers itself with.
#include <array>
#include <cstring>

#include "tests/support/effect_fixture.h"

namespace twtest {
namespace {

using Registration = EffectTest;

TEST_F(Registration, passesTheTenValues_whenTheHostAsks) {
    ASSERT_EQ(openHost(host_sim::premierePro()).registerEffect(), 0);
    ASSERT_EQ(host->registrations().size(), 1U);
    const host_sim::Registration& given = host->registrations()[0];
    EXPECT_NE(given.data, nullptr);
    EXPECT_EQ(given.name, "Tintwell");
    EXPECT_EQ(given.matchName, "TNWL Tintwell");
    EXPECT_EQ(given.category, "Color Correction");
    EXPECT_EQ(given.entryPoint, "EffectMain");
    EXPECT_EQ(given.kind, 1699105620);  // 'eFKT'
    EXPECT_EQ(given.apiMajor, 13);
    EXPECT_EQ(given.apiMinor, 29);
    EXPECT_EQ(given.reservedInfo, 8);
    EXPECT_EQ(given.supportUrl, "https://tintwell.example/support");
}

TEST_F(Registration, isTheSame_whenTheHostIsAfterEffects) {
    ASSERT_EQ(openHost(host_sim::afterEffects()).registerEffect(), 0);
    ASSERT_EQ(host->registrations().size(), 1U);
    EXPECT_EQ(host->registrations()[0].matchName, "TNWL Tintwell");
    EXPECT_EQ(host->registrations()[0].apiMajor, 13);
}

TEST_F(Registration, passesTheHostsRefusalBack_afterOneCall) {
    openHost(host_sim::premierePro());
    host->refusals().fail(host_sim::Refusal::kRegistration, host_sim::kEveryCall, 13);
    EXPECT_EQ(host->registerEffect(), 13);
    EXPECT_EQ(host->registrations().size(), 1U);
}

TEST_F(Registration, logsNothing_whenItRegisters) {
    openHost(host_sim::premierePro()).registerEffect();
    EXPECT_EQ(newLogLines(), Lines());
}

// The arguments of the callback below, which has no context.
struct Given {
    PF_PluginDataPtr data = nullptr;
    int calls = 0;
} given;

A_Err record(PF_PluginDataPtr data, const A_u_char*, const A_u_char*, const A_u_char*,
             const A_u_char*, A_long, A_long, A_long, A_long, const A_u_char*) {
    given.data = data;
    ++given.calls;
    return -7;
}

TEST_F(Registration, needsNothingBeyondTheCallback_whenTheRestIsNull) {
    const auto entry = openHost(host_sim::premierePro()).module().registration();
    int token = 0;
    const auto data = reinterpret_cast<PF_PluginDataPtr>(&token);
    EXPECT_EQ(entry(data, record, nullptr, nullptr, nullptr), -7);
    EXPECT_EQ(given.data, data);
    EXPECT_EQ(given.calls, 1);
}

TEST_F(Registration, namesAnEntryPointThatTheModuleExports) {
    openHost(host_sim::premierePro()).registerEffect();
    EXPECT_NO_THROW(host->module().command(host->registrations()[0].entryPoint.c_str()));
}

}  // namespace
}  // namespace twtest
