#include "fuzz/session/session_state.h"

#include <utility>

#include "fuzz/session/process_home.h"
#include "fuzz/session/violation.h"
#include "tests/support/stand_in_module.h"

namespace session_fuzz {
namespace {

void requireReleased(const host_sim::SuiteLedger& suites, const char* name, int version) {
    const host_sim::SuiteUse use = suites.use(name, version);
    if (use.acquired != use.released) violation(std::string(name) + " was not released");
}

}  // namespace

SessionState::SessionState(const host_sim::Personality& personality)
    : host(TINTWELL_MODULE, personality),
      dialogs(twtest::dialogsOf(host.module())),
      isPremiere_(personality.isPremiere()),
      nextDescriptor_(nextDescriptor()) {
    dialogs = {};
}

void SessionState::close() {
    nowRunning("the end");
    gpu.reset();
    host.refusals().clear();
    for (const Held& value : std::exchange(held, {}))
        require(calls().dispose(value.handle) == PF_Err_NONE, "DISPOSE gave an error");
    applied.clear();
    for (const std::string& problem : host.close())
        violation(problem);
    processHome().log.endSession();
}

host_sim::ArbitraryCalls SessionState::calls() {
    return host.arbitraryCalls(kParamLut);
}

Held SessionState::choose(Record& record) const {
    std::vector<Held> all = {{}};
    for (const Applied& one : applied)
        all.push_back({one.instance->arbitrary(kParamLut), one.lut});
    all.insert(all.end(), held.begin(), held.end());
    return all[static_cast<std::size_t>(record.below(static_cast<int>(all.size())))];
}

Applied* SessionState::chooseInstance(Record& record) {
    const std::uint8_t wanted = record.byte();
    if (applied.empty()) return nullptr;
    auto one = applied.begin();
    std::advance(one, wanted % applied.size());
    return &*one;
}

void SessionState::hold(const host_sim::Answer<PF_ArbitraryH>& answer, const Value& value) {
    require(answer.error == PF_Err_NONE, "a value was refused with an error");
    if (contents(answer.value) != value) violation("a new value does not hold what it must");
    if (held.size() < kMostHeld) {
        held.push_back({answer.value, value});
    } else {
        require(calls().dispose(answer.value) == PF_Err_NONE, "DISPOSE gave an error");
    }
}

void SessionState::readLog() {
    logged_ += processHome().log.added();
}

void SessionState::requireLine(const std::string& message) {
    readLog();
    if (logged_.find("  " + message + "\n") == std::string::npos)
        violation("the log lacks the line \"" + message + "\"");
}

void SessionState::keepDescriptors() {
    nextDescriptor_ = nextDescriptor();
}

void SessionState::check() {
    readLog();
    logged_.clear();
    checkBooks();
    checkHandles();
    checkValues();
    require(nextDescriptor() <= nextDescriptor_, "a file was left open");
    require(dialogs.alerts.empty(), "an unexpected alert");
}

Value SessionState::contents(PF_ArbitraryH handle) {
    if (handle == nullptr) return std::nullopt;
    return host.handles().contents(handle);
}

void SessionState::checkBooks() {
    host.handles().reportUnrest();
    requireReleased(host.suites(), kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1);
    requireReleased(host.suites(), kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3);
    if (!host.books().hasUnseenProblems()) return;
    std::string all;
    for (const std::string& problem : host.problems())
        all += "\n  " + problem;
    violation("the host has found" + all);
}

void SessionState::checkHandles() {
    std::size_t expected = defaultValue ? 1 : 0;
    for (const Applied& one : applied)
        expected += one.lut ? 1 : 0;
    for (const Held& value : held)
        expected += value.value ? 1 : 0;
    const std::size_t live = host.handles().counts().live;
    if (live == expected) return;
    violation("there are " + std::to_string(live) + " handles instead of " +
              std::to_string(expected));
}

void SessionState::checkValues() {
    for (const Held& value : held) {
        if (contents(value.handle) != value.value) violation("a held value has changed");
    }
    for (const Applied& one : applied) {
        const host_sim::Instance& instance = *one.instance;
        if (contents(instance.arbitrary(kParamLut)) != one.lut)
            violation("an instance's LUT is not what it must be");
        if (instance.label(kParamLutButton) != one.label)
            violation("a button says \"" + instance.label(kParamLutButton) + "\" instead of \"" +
                      one.label + "\"");
    }
}

}  // namespace session_fuzz
