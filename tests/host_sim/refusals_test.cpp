// What the host refuses on demand, as the effect and the books see it.
#include "host_sim/values/refusals.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host_sim/host.h"
#include "host_sim/values/error.h"
#include "session_script.h"

namespace {

using host_sim::Host;
using host_sim::Instance;
using Problems = std::vector<std::string>;

class Refusing : public testing::Test {
protected:
    Host host{TEST_MODULE, host_sim::premierePro()};
};

TEST_F(Refusing, anAllocation_givesANullValue) {
    host.start();
    host.refusals().fail(host_sim::Refusal::kAllocation, 2);
    const host_sim::ArbitraryCalls calls = host.arbitraryCalls(kText);
    const PF_ArbitraryH first = calls.create().value;
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(calls.create().value, nullptr);
    const PF_ArbitraryH third = calls.create().value;
    EXPECT_NE(third, nullptr);
    calls.dispose(first);
    calls.dispose(third);
    EXPECT_EQ(host.close(), Problems());
}

TEST_F(Refusing, allAllocations_lastsUntilSwitchedOff) {
    host.start();
    host.refusals().fail(host_sim::Refusal::kAllocation, host_sim::kEveryCall);
    Instance& effect = host.apply();
    EXPECT_EQ(effect.arbitrary(kText), nullptr);
    EXPECT_EQ(effect.press(kButton).error, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(effect.arbitrary(kText), nullptr);
    host.refusals().clear();
    effect.press(kButton);
    EXPECT_NE(effect.arbitrary(kText), nullptr);
}

TEST_F(Refusing, aResize_leavesTheValue) {
    host.start();
    Instance& effect = host.apply();
    host.refusals().fail(host_sim::Refusal::kResize, 1);
    EXPECT_EQ(effect.press(kButton).error, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(effect.print(kText).value, "none");
    EXPECT_EQ(effect.press(kButton).error, PF_Err_NONE);
}

TEST_F(Refusing, aLock_mayBeUnlockedAllTheSame) {
    host.start();
    Instance& effect = host.apply();
    host.refusals().fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(effect.arbitraryCalls(kText).printSize(effect.arbitrary(kText)).value, 1U);
    EXPECT_EQ(effect.arbitraryCalls(kText).printSize(effect.arbitrary(kText)).value, 5U);
    EXPECT_EQ(host.handles().counts().refusedLocks, 1U);
    EXPECT_EQ(host.handles().counts().unlocksAfterRefusal, 1U);
    EXPECT_EQ(host.close(), Problems());
}

TEST_F(Refusing, addParam_endsTheSetupAndFreesTheDefault) {
    host.registerEffect();
    host.refusals().fail(host_sim::Refusal::kAddParam, 2, 77);
    EXPECT_EQ(host.paramsSetup().error, 77);
    EXPECT_EQ(host.params().count(), 2);
    EXPECT_EQ(host.handles().counts().live, 0U);
    EXPECT_EQ(host.close(), Problems());
}

TEST_F(Refusing, theRegistration_isReturned) {
    host.refusals().fail(host_sim::Refusal::kRegistration, host_sim::kEveryCall, 5);
    EXPECT_EQ(host.registerEffect(), 5);
    EXPECT_THROW(host.start(), host_sim::SimError);
}

TEST_F(Refusing, aSuite_isNotFound) {
    host.refusals().answerSuite(kPFPixelFormatSuite, host_sim::SuiteAnswer::kNotFound);
    host.start();
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).refused, 1);
    EXPECT_EQ(host.pixelFormats().declared().size(), 0U);
}

TEST_F(Refusing, aSuiteTable_isNullInSpiteOfSuccess) {
    host.refusals().answerSuite(kPFParamUtilsSuite, host_sim::SuiteAnswer::kNullTable);
    host.start();
    Instance& effect = host.apply();
    effect.updateUi();
    EXPECT_EQ(effect.updates().size(), 0U);
    EXPECT_EQ(host.close(), Problems());
}

TEST_F(Refusing, aSuiteTable_comesWithAnError) {
    host.refusals().answerSuite(kPFPixelFormatSuite, host_sim::SuiteAnswer::kErrorWithTable);
    host.start();
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).refused, 1);
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).acquired, 0);
    EXPECT_EQ(host.pixelFormats().declared().size(), 0U);
}

TEST_F(Refusing, theBasicSuite_isNull) {
    host.refusals().withoutBasicSuite(true);
    host.start();
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).refused, 0);
    EXPECT_EQ(host.pixelFormats().clearCalls(), 0);
}

TEST_F(Refusing, anAcquisition_isOneOnly) {
    host.refusals().fail(host_sim::Refusal::kAcquisition, 2);
    host.start();
    Instance& effect = host.apply();
    effect.updateUi();
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).acquired, 1);
    EXPECT_EQ(host.suites().use(kPFParamUtilsSuite, 3).refused, 1);
    effect.updateUi();
    EXPECT_EQ(host.suites().use(kPFParamUtilsSuite, 3).acquired, 1);
    EXPECT_EQ(host.close(), Problems());
}

TEST_F(Refusing, anAcquisition_mayGiveANullTable) {
    host.refusals().fail(host_sim::Refusal::kSuiteTable, 1);
    host.start();
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).refused, 1);
    EXPECT_EQ(host.pixelFormats().declared().size(), 0U);
    EXPECT_EQ(host.close(), Problems());
}

TEST_F(Refusing, isDue_untilTheCallHasCome) {
    host.start();
    Instance& effect = host.apply();
    EXPECT_FALSE(host.refusals().isDue(host_sim::Refusal::kParamUpdate));
    host.refusals().fail(host_sim::Refusal::kParamUpdate, 2, 9);
    EXPECT_TRUE(host.refusals().isDue(host_sim::Refusal::kParamUpdate));
    effect.updateUi();
    EXPECT_EQ(effect.updates().size(), 1U);
    EXPECT_TRUE(host.refusals().isDue(host_sim::Refusal::kParamUpdate));
    effect.updateUi();
    EXPECT_EQ(effect.updates().size(), 1U);
    EXPECT_FALSE(host.refusals().isDue(host_sim::Refusal::kParamUpdate));
    effect.updateUi();
    EXPECT_EQ(effect.updates().size(), 2U);
}

TEST_F(Refusing, aParamUpdate_keepsTheOldLabel) {
    host.refusals().fail(host_sim::Refusal::kParamUpdate, host_sim::kEveryCall, 9);
    host.start();
    Instance& effect = host.apply();
    effect.updateUi();
    EXPECT_EQ(effect.label(kButton), "Press me");
}

}  // namespace
