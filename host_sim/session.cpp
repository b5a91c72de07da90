#include "host_sim/session.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "host_sim/callbacks.h"
#include "host_sim/values/error.h"

namespace host_sim {
namespace {

std::atomic<Session*> openSession = nullptr;

}  // namespace

Session::Session(const Personality& hostPersonality)
    : personality(hostPersonality),
      utilities(utilityCallbacks()),
      basic(basicSuite()),
      pixelFormatTable_(pixelFormatSuite()),
      paramUtilsTable_(paramUtilsSuite()) {
    suites.offer(kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3, &paramUtilsTable_);
    if (personality.isPremiere()) {
        suites.offer(kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1, &pixelFormatTable_);
    }
    Session* none = nullptr;
    if (!openSession.compare_exchange_strong(none, this)) {
        throw SimError("Only one simulated host can be open in a process.");
    }
}

Session::~Session() {
    openSession = nullptr;
}

Session& Session::current() {
    Session* session = openSession;
    if (session == nullptr) {
        std::fputs("A host callback was called while no simulated host is open.\n", stderr);
        std::abort();
    }
    return *session;
}

Session& Session::called() {
    Session& session = current();
    if (session.onCallback) session.onCallback();
    return session;
}

std::optional<int> Session::instanceOf(PF_ProgPtr effectRef, const char* callback) {
    const std::lock_guard lock(mutex_);
    for (const auto& [instance, ref] : refs_) {
        if (ref.get() == effectRef) return instance;
    }
    books.problem(std::string(callback) + " was given an unknown effect_ref");
    return std::nullopt;
}

PF_ProgPtr Session::effectRef(int instance) {
    const std::lock_guard lock(mutex_);
    std::unique_ptr<PF_ProgressInfo>& ref = refs_[instance];
    if (!ref) ref = std::make_unique<PF_ProgressInfo>(PF_ProgressInfo{instance});
    return ref.get();
}

}  // namespace host_sim
