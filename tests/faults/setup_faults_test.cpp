// The commands that set the effect up, and those that need no answer, while calls fail.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/faults/effect_scenario.h"

namespace faults {
namespace {

using host_sim::afterEffects;
using host_sim::CommandResult;
using host_sim::Personality;
using host_sim::premierePro;

class Registering : public HostScenario {
public:
    explicit Registering(const Personality& personality) : HostScenario(personality) {}

    void run() override { error_ = host().registerEffect(); }
    void repeat() override {
        reopen();
        run();
    }
    std::string outcome() override {
        EXPECT_EQ(host().registrations().size(), 1U);
        return answered(error_, "registered");
    }

private:
    A_Err error_ = 0;
};

TEST(SetupFaults, ofTheRegistration) {
    for (const Personality& personality : {afterEffects(), premierePro()})
        expectEffect(scenario<Registering>(personality),
                     Expected("registered").failed(kRegister, {"error 77"}));
}

class GlobalSetup : public HostScenario {
public:
    explicit GlobalSetup(const Personality& personality) : HostScenario(personality) {
        host().registerEffect();
    }

    void run() override { result_ = host().globalSetup(); }
    std::string outcome() override {
        const bool isDone = result_.out.my_version == 0x8000B && result_.out.out_flags == 0x4000400;
        const std::size_t formats = host().pixelFormats().declared().size();
        return answered(result_.error, "no error") + (isDone ? "" : ", nothing set") + ", " +
               std::to_string(formats) + " formats";
    }

private:
    CommandResult result_;
};

TEST(SetupFaults, ofGlobalSetup) {
    const Outcomes noMemory = {"error 512, nothing set, 0 formats"};
    expectEffect(scenario<GlobalSetup>(afterEffects()),
                 Expected("no error, 0 formats").failed(kNew, noMemory).harmless(kLogKinds));
    // A missing suite is logged.
    const Outcomes noSuite = {"no error, 0 formats"};
    expectEffect(scenario<GlobalSetup>(premierePro()), Expected("no error, 2 formats")
                                                           .failed(kNew, noMemory)
                                                           .failed(kSuite, noSuite)
                                                           .failed(kNoTable, noSuite)
                                                           .harmless(kLogKinds));
}

class ParamsSetup : public HostScenario {
public:
    explicit ParamsSetup(const Personality& personality) : HostScenario(personality) { prepare(); }

    void run() override { result_ = host().paramsSetup(); }
    // Parameters are declared once.
    void repeat() override {
        reopen();
        prepare();
        run();
    }
    std::string outcome() override {
        const bool isSet = result_.out.num_params == 5;
        EXPECT_EQ(isSet, result_.error == 0);
        return answered(result_.error, "no error") + ", " +
               std::to_string(host().params().count()) + " parameters" + defaultThen();
    }

private:
    void prepare() {
        host().registerEffect();
        host().globalSetup();
    }

    std::string defaultThen() {
        if (host().params().count() <= kLut) return "";
        const PF_ArbitraryH value = host().params().at(kLut).definition.u.arb_d.dephault;
        if (value == nullptr) return ", null";
        return host().handles().contents(value) == twtest::emptyLut() ? "" : ", unfilled";
    }

    CommandResult result_;
};

TEST(SetupFaults, ofTheParameters) {
    for (const Personality& personality : {afterEffects(), premierePro()})
        expectEffect(scenario<ParamsSetup>(personality),
                     Expected("no error, 5 parameters")
                         .failed(kNew, {"error 512, 2 parameters"})
                         .failed(kHandle, {"no error, 5 parameters, null"})
                         .failed(kLock, {"no error, 5 parameters, unfilled"})
                         .failed(kAddParam, {"error 77, 1 parameters", "error 77, 2 parameters",
                                             "error 77, 3 parameters", "error 77, 4 parameters"}));
}

class About : public EffectScenario {
public:
    About() : EffectScenario(twtest::emptyLut()) {}

    void run() override { result_ = host().command(PF_Cmd_ABOUT); }
    std::string outcome() override {
        return answered(result_.error, result_.message().substr(0, sizeof "Tintwell"));
    }

private:
    CommandResult result_;
};

TEST(SetupFaults, ofTheAboutBox_areNone) {
    expectEffect(scenario<About>(), Expected("Tintwell "));
}

// Commands that the effect does nothing for.
class OtherCommands : public EffectScenario {
public:
    OtherCommands() : EffectScenario(twtest::emptyLut()) {}

    void run() override {
        answers_ = "";
        for (const PF_Cmd command :
             {PF_Cmd_SEQUENCE_SETUP, PF_Cmd_SEQUENCE_RESETUP, PF_Cmd_SEQUENCE_FLATTEN,
              PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_DO_DIALOG, PF_Cmd_FRAME_SETUP, PF_Cmd_FRAME_SETDOWN,
              PF_Cmd_EVENT, PF_Cmd_SMART_PRE_RENDER, PF_Cmd_SMART_RENDER, PF_Cmd_GLOBAL_SETDOWN})
            answers_ += std::to_string(effect().command(command).error);
    }
    std::string outcome() override { return answers_; }

private:
    std::string answers_;
};

TEST(SetupFaults, ofOtherCommands_areNone) {
    expectEffect(scenario<OtherCommands>(), Expected("00000000000"));
}

// A press of another control is logged, for which the data folder is made where it is missing.
class OtherPress : public EffectScenario {
public:
    explicit OtherPress(bool hasFolder) : EffectScenario(twtest::emptyLut()), has_(hasFolder) {}

    void run() override {
        std::filesystem::remove(logFile());
        if (!has_) std::filesystem::remove(home_.dataFolder());
        result_ = effect().press(twtest::kAmount);
    }
    std::string outcome() override {
        EXPECT_EQ(result_.changed, std::vector<int>());
        const bool isLogged = !twtest::readFile(logFile()).empty();
        return answered(result_.error, "no error") + (isLogged ? ", logged" : ", not logged");
    }

private:
    bool has_;
    CommandResult result_;
};

Expected logged() {
    const Outcomes lost = {"no error, not logged"};
    return Expected("no error, logged")
        .failed(kNew, {"error 512, not logged"})
        .failed(kWrite, lost)
        .failed(kClose, lost);
}

TEST(SetupFaults, ofAChangeThatMeansNothing) {
    // A log that cannot be opened is tried once more.
    expectEffect(scenario<OtherPress>(true), logged().harmless({kOpen}));
}

TEST(SetupFaults, ofALogWithoutItsFolder) {
    expectEffect(scenario<OtherPress>(false),
                 logged().failed(kOpen, {"no error, logged", "no error, not logged"}));
}

}  // namespace
}  // namespace faults
