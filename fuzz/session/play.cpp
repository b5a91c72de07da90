#include "fuzz/session/play.h"

#include <exception>
#include <string>

#include "fuzz/session/commands.h"
#include "fuzz/session/ground.h"
#include "fuzz/session/violation.h"

namespace session_fuzz {
namespace {

constexpr std::size_t kMostRecords = 48;

// What goes wrong while the effect is set up.
struct Trouble {
    int what = 0;
    int nth = 0;

    explicit Trouble(Record& record) : what(record.below(16)), nth(1 + record.below(4)) {}
    bool atRegistration() const { return what == 1; }
    PF_Err atParams() const { return what == 2 ? PF_Err_OUT_OF_MEMORY : PF_Err_NONE; }

    void cause(Stage& stage) const {
        host_sim::Refusals& host = stage.host.refusals();
        if (atRegistration())
            host.fail(host_sim::Refusal::kRegistration, host_sim::kEveryCall, nth);
        if (atParams() != PF_Err_NONE) host.fail(host_sim::Refusal::kAddParam, nth, atParams());
        if (what == 3) host.fail(host_sim::Refusal::kAllocation, stage.reference.allocation = 1);
        if (what == 4) host.fail(host_sim::Refusal::kLock, stage.reference.lock = 1);
        if (what == 5) host.answerSuite(kPFPixelFormatSuite, host_sim::SuiteAnswer::kNotFound);
        if (what == 6) host.answerSuite(kPFPixelFormatSuite, host_sim::SuiteAnswer::kNullTable);
        if (what == 7) host.withoutBasicSuite(true);
    }
};

// Whether the session can go on.
bool setUp(Stage& stage, Record& record) {
    const Trouble trouble(record);
    trouble.cause(stage);
    const A_Err registration = stage.host.registerEffect();
    require(registration == (trouble.atRegistration() ? trouble.nth : A_Err_NONE),
            "the registration's error is wrong");
    if (registration != A_Err_NONE) return false;
    require(stage.host.globalSetup().error == PF_Err_NONE, "GLOBAL_SETUP gave an error");
    require(stage.host.paramsSetup().error == trouble.atParams(), "PARAMS_SETUP's error is wrong");
    const bool hasDefault = trouble.atParams() == PF_Err_NONE || trouble.nth > 2;
    if (hasDefault) stage.defaultValue = stage.reference.none();
    endRefusals(stage);
    stage.check();
    return trouble.atParams() == PF_Err_NONE;
}

void playCommand(Stage& stage, Record record) {
    const Command& command = commandOf(record.byte());
    nowPlaying(std::string(1, command.letter) + ", " + command.name);
    command.play(stage, record);
    if (command.play == refuse) return;
    endRefusals(stage);
    stage.check();
}

// How many commands the host has sent.
std::size_t play(const std::vector<Bytes>& records) {
    nowPlaying("the beginning");
    Record first(records.front());
    Stage stage(first.flag() ? host_sim::afterEffects() : host_sim::premierePro());
    if (setUp(stage, first)) {
        apply(stage, first);
        for (std::size_t i = 1; i < records.size(); ++i)
            playCommand(stage, Record(records[i]));
    }
    const std::size_t sent = stage.host.books().calls().size();
    stage.close();
    return sent;
}

}  // namespace

std::size_t playSession(const std::uint8_t* bytes, std::size_t size) {
    const std::vector<Bytes> records = recordsOf(bytes, size, kMostRecords);
    if (records.empty()) return 0;
    ground().clear();
    try {
        return play(records);
    } catch (const std::exception& error) {
        violation(error.what());
    }
}

}  // namespace session_fuzz
