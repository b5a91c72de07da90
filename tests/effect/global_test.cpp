// GLOBAL_SETUP: what the effect declares of itself, and the pixel formats of Premiere Pro.
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "host_api/pixel_format_suite.h"
#include "tests/effect/missing_suites.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/row_name.h"

namespace twtest {
namespace {

constexpr char kSuite[] = "PF Pixel Format Suite";

class Global : public EffectTest {
protected:
    host_sim::CommandResult setUp(const host_sim::Personality& personality) {
        if (!host) openHost(personality).registerEffect();
        return host->globalSetup();
    }

    int suiteRequests() const {
        const host_sim::SuiteUse use = host->suites().use(kSuite, 1);
        return use.acquired + use.refused;
    }
};

void expectVersionAndFlags(const host_sim::CommandResult& result) {
    EXPECT_EQ(result.error, 0);
    EXPECT_EQ(result.out.my_version, 0x8000BU);
    EXPECT_EQ(result.out.out_flags, 0x4000400);
    EXPECT_EQ(result.out.out_flags2, 0x8000000);
}

TEST_F(Global, setsVersionAndFlagsOnly_whenTheRecordIsFull) {
    openHost(host_sim::afterEffects()).registerEffect();
    PF_OutData expected = fullOutData();
    host->outPreset() = expected;
    expected.my_version = 0x8000B;
    expected.out_flags = 0x4000400;
    expected.out_flags2 = 0x8000000;
    const host_sim::CommandResult result = host->globalSetup();
    EXPECT_EQ(result.error, 0);
    EXPECT_TRUE(sameBytes(result.out, expected));
}

TEST_F(Global, logsBuildHostAndInterface_inAfterEffects) {
    expectVersionAndFlags(setUp(host_sim::afterEffects()));
    EXPECT_EQ(newLogLines(), Lines({"GlobalSetup build 11 host=FXTC api=13.29"}));
    EXPECT_EQ(suiteRequests(), 0);
}

TEST_F(Global, logsBuildHostAndInterface_inPremierePro) {
    host_sim::Personality older = host_sim::premierePro();
    older.apiVersion.major = 12;
    older.apiVersion.minor = 7;
    expectVersionAndFlags(setUp(older));
    EXPECT_EQ(newLogLines(), Lines({"GlobalSetup build 11 host=PrMr api=12.7"}));
}

TEST_F(Global, printsTheCodesBytesFromTheHighestOn_whenTheHostIsUnknown) {
    host_sim::Personality other = host_sim::afterEffects();
    other.applId = static_cast<A_long>(0xE9427A31);
    expectVersionAndFlags(setUp(other));
    EXPECT_EQ(newLogLines(), Lines({"GlobalSetup build 11 host=\xE9"
                                    "Bz1 api=13.29"}));
    EXPECT_EQ(suiteRequests(), 0);
}

TEST_F(Global, stampsItsLineWithTheTime) {
    setUp(host_sim::afterEffects());
    const std::regex line(
        R"(\d{4}-[01]\d-[0-3]\d [0-2]\d:[0-5]\d:[0-6]\d  GlobalSetup build 11 .*\n)");
    const std::string log = twtest::readFile(logFile());
    EXPECT_TRUE(std::regex_match(log, line)) << log;
}

TEST_F(Global, declaresFloatBeforeEightBits_inPremierePro) {
    setUp(host_sim::premierePro());
    const std::vector<PrPixelFormat> floatFirst = {PrPixelFormat_BGRA_4444_32f,
                                                   PrPixelFormat_BGRA_4444_8u};
    EXPECT_EQ(host->pixelFormats().declared(), floatFirst);
    EXPECT_EQ(host->pixelFormats().clearCalls(), 1);
    EXPECT_EQ(host->suites().use(kSuite, 1).acquired, 1);
    EXPECT_EQ(host->suites().use(kSuite, 1).released, 1);
}

TEST_F(Global, clearsBeforeItAdds_whenTheHostRemembersFormats) {
    setUp(host_sim::premierePro());
    setUp(host_sim::premierePro());
    EXPECT_EQ(host->pixelFormats().declared().size(), 2U);
    EXPECT_EQ(host->pixelFormats().clearCalls(), 2);
}

class GlobalWithoutSuite : public Global, public ::testing::WithParamInterface<MissingSuite> {};

TEST_P(GlobalWithoutSuite, saysSoAndGoesOn_inPremierePro) {
    openHost(host_sim::premierePro()).registerEffect();
    GetParam().arrange(host->refusals(), kSuite);
    expectVersionAndFlags(setUp(host_sim::premierePro()));
    EXPECT_EQ(newLogLines(), Lines({"GlobalSetup build 11 host=PrMr api=13.4",
                                    "GlobalSetup: no pixel format suite"}));
    EXPECT_TRUE(host->pixelFormats().declared().empty());
    EXPECT_EQ(host->suites().use(kSuite, 1).released, 0);
    EXPECT_EQ(suiteRequests(), GetParam().isAsked ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(When, GlobalWithoutSuite, ::testing::ValuesIn(kMissingSuites), RowName());

TEST_F(Global, doesNotAskForTheSuite_whenAfterEffectsHidesIt) {
    openHost(host_sim::afterEffects()).registerEffect();
    host->refusals().answerSuite(kSuite, host_sim::SuiteAnswer::kNotFound);
    expectVersionAndFlags(setUp(host_sim::afterEffects()));
    EXPECT_EQ(newLogLines(), Lines({"GlobalSetup build 11 host=FXTC api=13.29"}));
    EXPECT_EQ(suiteRequests(), 0);
}

TEST(GlobalWithoutDataFolder, succeeds_whenTheLogCannotBeWritten) {
    const twtest::TempHome home(twtest::TempHome::Holds::kNothing);
    host_sim::Host host(twtest::testedModule(), host_sim::afterEffects());
    host.registerEffect();
    expectVersionAndFlags(host.globalSetup());
    EXPECT_FALSE(std::filesystem::exists(home.supportFolder()));
    EXPECT_EQ(host.close(), Lines());
}

TEST(GlobalWithoutDataFolder, makesTheFolder_whenOnlyItIsMissing) {
    const twtest::TempHome home(twtest::TempHome::Holds::kSupportFolder);
    host_sim::Host host(twtest::testedModule(), host_sim::afterEffects());
    host.registerEffect();
    expectVersionAndFlags(host.globalSetup());
    EXPECT_EQ(readLog(home.dataFile("effect.log")),
              Lines({"GlobalSetup build 11 host=FXTC api=13.29"}));
    EXPECT_EQ(host.close(), Lines());
}

}  // namespace
}  // namespace twtest
