#include <cstddef>
#include <cstring>
#include <set>
#include <thread>

#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/effect/button_fixture.h"
#include "tests/effect/missing_suites.h"
#include "tests/support/failing_calls.h"
#include "tests/support/row_name.h"
#include "tests/support/stand_in_module.h"

namespace {

using twtest::kLut;
using twtest::kLutButton;
using twtest::Lines;
using twtest::widened;

constexpr char kSuite[] = "PF Param Utils Suite";

class ButtonLabel : public twtest::ButtonTest {
protected:
    // The label after an update with that text in the parameter.
    std::string labelOf(const std::string& text) {
        effect().setBytes(kLut, widened(text));
        EXPECT_EQ(effect().updateUi().error, PF_Err_NONE);
        return label();
    }

    static std::string named(const std::string& name) {
        tw::Lut3D lut;
        EXPECT_TRUE(tw::parseCube(twtest::cube(2), lut, nullptr));
        return tw::toEmbeddedText(lut, 0, name);
    }
};

// ---- Texts

TEST_F(ButtonLabel, asksForALut_whenTheEffectIsFresh) {
    EXPECT_EQ(effect().updateUi().error, PF_Err_NONE);
    EXPECT_EQ(label(), "Choose a LUT");
}

TEST_F(ButtonLabel, asksForALut_whenThereIsNoHandle) {
    effect().setNull(kLut);
    effect().updateUi();
    EXPECT_EQ(label(), "Choose a LUT");
}

TEST_F(ButtonLabel, asksForALut_whenTheHandleCannotBeLocked) {
    effect().setBytes(kLut, widened(named("Film")));
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    effect().updateUi();
    EXPECT_EQ(label(), "Choose a LUT");
}

TEST_F(ButtonLabel, asksForALut_whenTheBytesAreForeign) {
    EXPECT_EQ(labelOf("nothing of ours"), "Choose a LUT");
    EXPECT_EQ(labelOf("TWLUT3 broken"), "Choose a LUT");
}

TEST_F(ButtonLabel, namesACalibrationPattern_ofAnySize) {
    EXPECT_EQ(labelOf("TWLUTP 2"), "Calibrating");
    EXPECT_EQ(labelOf("TWLUTP 64"), "Calibrating");
}

TEST_F(ButtonLabel, asksToApplyAgain_whenTheLutHasNoName) {
    std::string text = named("");
    EXPECT_EQ(labelOf(text), "From Tintwell (Apply again to name it)");
    text.replace(0, std::strlen("TWLUT3 0 -"), "TWLUT2 5");
    EXPECT_EQ(labelOf(text), "From Tintwell (Apply again to name it)");
}

TEST_F(ButtonLabel, isTheNameAsAFileName) {
    EXPECT_EQ(labelOf(named("Warm.v2")), "Warm.v2.cube");
    EXPECT_EQ(labelOf(named("\xC3\xA9t\xC3\xA9 \"q\"")), "\xC3\xA9t\xC3\xA9 \"q\".cube");
}

// ---- What the host gets

TEST_F(ButtonLabel, changesTwoFieldsOfACopyOfTheDefinition) {
    labelOf(named("Film"));
    ASSERT_EQ(effect().updates().size(), 1u);
    const host_sim::ParamUpdate update = effect().updates().front();
    EXPECT_EQ(update.index, kLutButton);
    PF_ParamDef expected = host->params().at(kLutButton).definition;
    expected.uu.change_flags = PF_ChangeFlag_NONE;
    EXPECT_STREQ(update.definition.name, "LUT ");
    std::memcpy(expected.name, update.definition.name, sizeof expected.name);
    expected.u.button_d.u.namesptr = update.definition.u.button_d.u.namesptr;
    EXPECT_EQ(std::memcmp(&update.definition, &expected, sizeof expected), 0);
}

// The host gets its other fields back unchanged.
TEST_F(ButtonLabel, keepsTheOtherFieldsOfTheHostsRecord) {
    PF_ParamDef& record = effect().record(kLutButton);
    record.ui_width = 1234;
    std::strcpy(record.name, "another name");
    labelOf(named("Film"));
    ASSERT_EQ(effect().updates().size(), 1u);
    const PF_ParamDef update = effect().updates().front().definition;
    EXPECT_EQ(update.ui_width, 1234);
    EXPECT_STREQ(update.name, "LUT ");
}

TEST_F(ButtonLabel, keepsEveryTextAtItsAddress) {
    host_sim::Instance& other = host->apply();
    other.setBytes(kLut, widened(named("kept")));
    other.updateUi();
    for (int i = 0; i < 300; ++i)
        labelOf(named("n" + std::to_string(i)));
    EXPECT_EQ(other.label(kLutButton), "kept.cube");
    labelOf(named("kept"));
    EXPECT_EQ(effect().updates().back().label, other.updates().back().label);
}

// ---- The log

TEST_F(ButtonLabel, isLogged_whenItOrItsReasonChanges) {
    pickFile(write("Film.cube", twtest::cube(2)));
    // The host follows the pick with the update that it asks for.
    const Lines lines = log();
    EXPECT_EQ((Lines{lines.end() - 2, lines.end()}),
              (Lines{"LUT button: label \"Film.cube\" (picked) -> err 0",
                     "LUT button: label \"Film.cube\" (update) -> err 0"}));
    effect().updateUi();
    EXPECT_EQ(log(), Lines());
    labelOf("TWLUTP 8");
    EXPECT_EQ(log(), Lines{"LUT button: label \"Calibrating\" (update) -> err 0"});
}

TEST_F(ButtonLabel, isLogged_whenTheHostsAnswerChanges) {
    host->refusals().fail(host_sim::Refusal::kParamUpdate, host_sim::kEveryCall,
                          PF_Err_INVALID_CALLBACK);
    EXPECT_EQ(effect().updateUi().error, PF_Err_NONE);
    EXPECT_EQ(effect().updateUi().error, PF_Err_NONE);
    EXPECT_EQ(log(), Lines{"LUT button: label \"Choose a LUT\" (update) -> err 515"});
    host->refusals().clear();
    effect().updateUi();
    EXPECT_EQ(log(), Lines{"LUT button: label \"Choose a LUT\" (update) -> err 0"});
}

TEST_F(ButtonLabel, isLogged_afterTheSuiteIsReleased) {
    const auto suite = [this] { return host->suites().use(kSuite, 3); };
    std::vector<Lines> logged;
    bool held = false;
    host->watchCallbacks([&] {
        logged.push_back(log());
        held = suite().acquired > suite().released;
    });
    EXPECT_EQ(effect().updateUi().error, PF_Err_NONE);
    host->watchCallbacks({});
    // The last call was the release of the suite.
    EXPECT_TRUE(held);
    EXPECT_EQ(suite().released, suite().acquired);
    EXPECT_EQ(logged, std::vector<Lines>(logged.size()));
    EXPECT_EQ(log(), Lines{"LUT button: label \"Choose a LUT\" (update) -> err 0"});
}

// ---- No suite

class ButtonLabelWithoutSuite : public ButtonLabel,
                                public testing::WithParamInterface<twtest::MissingSuite> {};

TEST_P(ButtonLabelWithoutSuite, stays) {
    GetParam().arrange(host->refusals(), kSuite);
    EXPECT_EQ(effect().updateUi().error, PF_Err_NONE);
    EXPECT_EQ(effect().updateUi().error, PF_Err_NONE);
    EXPECT_EQ(label(), "Change LUT");
    const std::string line = "LUT button: no param utils suite (update)";
    EXPECT_EQ(log(), (Lines{line, line}));
}

INSTANTIATE_TEST_SUITE_P(When, ButtonLabelWithoutSuite, testing::ValuesIn(twtest::kMissingSuites),
                         twtest::RowName());

TEST_F(ButtonLabel, leavesThePickedLutStored_whenItFails) {
    host->refusals().answerSuite(kSuite, host_sim::SuiteAnswer::kNotFound);
    const auto result = pickFile(write("Film.cube", twtest::cube(2)));
    EXPECT_EQ(result.error, PF_Err_NONE);
    EXPECT_EQ(result.changed, std::vector<int>{kLut});
    const Lines lines = log();
    EXPECT_EQ((Lines{lines.end() - 2, lines.end()}),
              (Lines{"LUT button: no param utils suite (picked)",
                     "LUT button: no param utils suite (update)"}));
}

// ---- Threads

#ifdef TINTWELL_CHECK_LOCKS
TEST_F(ButtonLabel, isKeptAndComparedUnderLocks) {
    if (!twtest::canFail(twtest::LibraryCall::kNew))
        GTEST_SKIP() << "ThreadSanitizer allocates itself";
    twtest::watchCallsOf(host->module().symbol("EffectMain"));
    const auto heldLock = twtest::heldLockOf(host->module());
    effect().setBytes(kLut, widened(named("a name that no string holds in itself")));
    std::set<std::string> locks;
    const std::function<void()> note = [&] {
        if (const char* lock = heldLock()) locks.insert(lock);
    };
    twtest::tellOfBlocks(&note);
    {
        const twtest::Watch watch;
        effect().updateUi();
    }
    twtest::tellOfBlocks(nullptr);
    EXPECT_TRUE(locks.contains("kept labels"));
    EXPECT_TRUE(locks.contains("label line"));
}
#endif

TEST_F(ButtonLabel, mayBeUpdatedOnSeveralThreads) {
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        host_sim::Instance& instance = host->apply();
        threads.emplace_back([&instance, number] {
            for (int i = 0; i < 25; ++i) {
                const std::string name = std::to_string(number) + "-" + std::to_string(i);
                instance.setBytes(kLut, widened(named(name)));
                instance.updateUi();
                EXPECT_EQ(instance.label(kLutButton), name + ".cube");
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
