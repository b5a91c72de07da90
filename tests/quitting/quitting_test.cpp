// The host may call until its process has ended: from handlers that run at exit, and on threads
// that still run then.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>
#include <utility>
#include <vector>

#include "tests/quitting/calls.h"
#include "tests/quitting/ending.h"
#include "tests/support/row_name.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tested_module.h"

#if defined(__SANITIZE_ADDRESS__)
#define TINTWELL_LEAKS_ARE_SOUGHT
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TINTWELL_LEAKS_ARE_SOUGHT
#endif
#endif
#if defined(TINTWELL_LEAKS_ARE_SOUGHT)
#include <sanitizer/lsan_interface.h>
#endif

// A thread that is at work when its process ends is no leak. Read by ThreadSanitizer.
extern "C" const char* __tsan_default_options();
extern "C" const char* __tsan_default_options() {
    return "print_suppressions=0:report_thread_leaks=0";
}

namespace quitting {
namespace {

constexpr int kEarlyCalls = 3;
constexpr int kLateCalls = 60;

void callOften(OpenSession& session, host_sim::Instance& effect, const Kind& kind, int first,
               int count) {
    for (int round = first; round < first + count; ++round)
        kind.call(session, effect, round);
}

class Quitting : public testing::TestWithParam<Kind> {
protected:
    const twtest::TempHome home_;  // this process's, which clears up
};

TEST_P(Quitting, takesCallsFromAHandlerAtExit) {
    expectGoodEnd([] {
        static OpenSession* session = nullptr;
        static host_sim::Instance* effect = nullptr;
        atTheVeryEnd([] { callOften(*session, *effect, GetParam(), kEarlyCalls, kLateCalls); });
        session = new OpenSession(GetParam().personality());
        effect = &session->apply();
        callOften(*session, *effect, GetParam(), 0, kEarlyCalls);
    });
}

// Threads that are kept inside their calls until everything else has ended.
class KeptThreads {
public:
    // First of all.
    KeptThreads() {
        atTheVeryEnd([this] {
            gate_.open();
            for (std::thread& thread : threads_)
                thread.join();
        });
    }

    void start(std::function<void()> work) {
        threads_.push_back(startThread([this, work = std::move(work)] {
            gate_.announce();
            work();
        }));
    }
    void step() { gate_.step(); }
    void waitUntilKept() { gate_.waitFor(static_cast<int>(threads_.size())); }

private:
    Gate gate_;
    std::vector<std::thread> threads_;
};

// At the call's first callback.
TEST_P(Quitting, endsCallsThatAreUnderWay) {
    expectGoodEnd([] {
        static KeptThreads& threads = *new KeptThreads;
        static OpenSession& session = *new OpenSession(GetParam().personality());
        callOften(session, session.apply(), GetParam(), 0, kEarlyCalls);
        session.host().watchCallbacks([] { threads.step(); });
        for (const int first : {0, 10}) {
            threads.start([&effect = session.apply(), first] {
                callOften(session, effect, GetParam(), first, kLateCalls);
            });
        }
        threads.waitUntilKept();
    });
}

INSTANTIATE_TEST_SUITE_P(With, Quitting, testing::ValuesIn(kinds()), twtest::RowName());

TEST(QuittingWithAnOpenDialog, endsThePress) {
    const twtest::TempHome home;
    expectGoodEnd([] {
        static KeptThreads& threads = *new KeptThreads;
        const Kind& presses = pressesOfTheLutButton();
        static OpenSession& session = *new OpenSession(presses.personality());
        callOften(session, session.apply(), presses, 0, kEarlyCalls);
        session.inDialog = [] { threads.step(); };
        threads.start([&effect = session.apply(), &presses] {
            callOften(session, effect, presses, 0, kEarlyCalls);
        });
        threads.waitUntilKept();
    });
}

// What the module keeps is unreachable then, and leaked on purpose.
void unloadAfterUse() {
#if defined(TINTWELL_LEAKS_ARE_SOUGHT)
    __lsan_disable();
#endif
    const std::string module = twtest::testedModule();
    {
        OpenSession session(host_sim::premierePro());
        for (const Kind& kind : kinds())
            if (kind.personality().isPremiere())
                callOften(session, session.apply(), kind, 0, kEarlyCalls);
        require(session.host().close().empty(), "the host found something left");
    }
    void* const library = dlopen(module.c_str(), RTLD_NOLOAD | RTLD_NOW);
    require(library != nullptr, "the module is not loaded");
    // Once for this call, once for the host's, which keeps its modules.
    require(dlclose(library) == 0 && dlclose(library) == 0, "the module cannot be unloaded");
    require(dlopen(module.c_str(), RTLD_NOLOAD | RTLD_NOW) == nullptr, "the module stays");
}

TEST(QuittingAfterUnloading, runsNothingOfTheModules) {
    const twtest::TempHome home;
    expectGoodEnd(unloadAfterUse);
}

int runsWanted() {
    const char* wanted = std::getenv("TINTWELL_QUITTING_RUNS");
    return wanted ? std::atoi(wanted) : 20;
}

// No thread waits for another: two threads render until the process is gone.
void renderToTheEnd() {
    static std::atomic<int> frames[2];
    atTheVeryEnd([] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); });
    const Kind& kind = framesOfFloats();
    static OpenSession& session = *new OpenSession(kind.personality());
    for (std::atomic<int>& count : frames) {
        startThread([&count, &effect = session.apply(), &kind] {
            for (;; ++count)
                kind.call(session, effect, count);
        }).detach();
    }
    for (const std::atomic<int>& count : frames) {
        while (count < kEarlyCalls)
            std::this_thread::yield();
    }
}

TEST(QuittingFreely, harmsNothing_whileTwoThreadsRender) {
    const twtest::TempHome home;
    for (int run = 0; run < runsWanted() && !testing::Test::HasFailure(); ++run)
        expectGoodEnd(renderToTheEnd);
}

}  // namespace
}  // namespace quitting
