#include "fuzz/session/run_session.h"

#include <exception>
#include <string>

#include "fuzz/session/process_home.h"
#include "fuzz/session/steps.h"
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

    void cause(SessionState& session) const {
        host_sim::Refusals& host = session.host.refusals();
        if (atRegistration())
            host.fail(host_sim::Refusal::kRegistration, host_sim::kEveryCall, nth);
        if (atParams() != PF_Err_NONE) host.fail(host_sim::Refusal::kAddParam, nth, atParams());
        if (what == 3) host.fail(host_sim::Refusal::kAllocation, session.reference.allocation = 1);
        if (what == 4) host.fail(host_sim::Refusal::kLock, session.reference.lock = 1);
        if (what == 5) host.answerSuite(kPFPixelFormatSuite, host_sim::SuiteAnswer::kNotFound);
        if (what == 6) host.answerSuite(kPFPixelFormatSuite, host_sim::SuiteAnswer::kNullTable);
        if (what == 7) host.withoutBasicSuite(true);
    }
};

// Whether the session can go on.
bool setUp(SessionState& session, Record& record) {
    const Trouble trouble(record);
    trouble.cause(session);
    const A_Err registration = session.host.registerEffect();
    require(registration == (trouble.atRegistration() ? trouble.nth : A_Err_NONE),
            "the registration's error is wrong");
    if (registration != A_Err_NONE) return false;
    require(session.host.globalSetup().error == PF_Err_NONE, "GLOBAL_SETUP gave an error");
    require(session.host.paramsSetup().error == trouble.atParams(),
            "PARAMS_SETUP's error is wrong");
    const bool hasDefault = trouble.atParams() == PF_Err_NONE || trouble.nth > 2;
    if (hasDefault) session.defaultValue = session.reference.none();
    endRefusals(session);
    session.check();
    return trouble.atParams() == PF_Err_NONE;
}

void runStep(SessionState& session, Record record) {
    const Step& command = stepOf(record.byte());
    nowRunning(std::string(1, command.letter) + ", " + command.name);
    command.run(session, record);
    if (command.run == refuse) return;
    endRefusals(session);
    session.check();
}

// How many commands the host has sent.
std::size_t run(const std::vector<Bytes>& records) {
    nowRunning("the beginning");
    Record first(records.front());
    SessionState session(first.flag() ? host_sim::afterEffects() : host_sim::premierePro());
    if (setUp(session, first)) {
        apply(session, first);
        for (std::size_t i = 1; i < records.size(); ++i)
            runStep(session, Record(records[i]));
    }
    const std::size_t sent = session.host.books().calls().size();
    session.close();
    return sent;
}

}  // namespace

std::size_t runSession(const std::uint8_t* bytes, std::size_t size) {
    const std::vector<Bytes> records = recordsOf(bytes, size, kMostRecords);
    if (records.empty()) return 0;
    processHome().clear();
    try {
        return run(records);
    } catch (const std::exception& error) {
        violation(error.what());
    }
}

}  // namespace session_fuzz
