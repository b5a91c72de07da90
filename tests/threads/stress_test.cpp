// Eight threads make every kind of call that a host may make, all at once.
//
//   stress_test                  a few runs of the host, the same ones each time
//   stress_test SECONDS [SEED]   one run after the other until the time is over
#include <gtest/gtest.h>

#include <barrier>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <thread>
#include <vector>

#include "tests/threads/stress_worker.h"

namespace stress {
namespace {

constexpr int kWorkers = 8;
constexpr int kRounds = 60;
constexpr int kRuns = 3;

double seconds = 0.0;
std::uint64_t firstSeed = 1;

// One run of the host.
Tally run(const Inputs& inputs, std::uint64_t seed) {
    SharedHost shared(inputs, seed % 3 == 0);
    std::deque<Worker> workers;
    for (int number = 0; number < kWorkers; ++number)
        workers.emplace_back(shared, number, seed);
    std::barrier ready(kWorkers);
    std::vector<std::thread> threads;
    for (Worker& worker : workers) {
        threads.emplace_back([&] {
            ready.arrive_and_wait();
            worker.run(kRounds);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::vector<Tally> tallies;
    for (const Worker& worker : workers)
        tallies.push_back(worker.tally());
    return shared.finish(tallies);
}

void print(const Tally& tally, std::uint64_t runs, double took) {
    for (const auto& [kind, count] : tally.operations())
        std::printf("%9ld  %s\n", count, kind.c_str());
    std::printf("%llu run(s) of the host with %d threads in %.0f s\n",
                static_cast<unsigned long long>(runs), kWorkers, took);
}

TEST(Stress, leavesEverythingRight_whenEightThreadsDoEverythingAtOnce) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    const auto took = [&] { return std::chrono::duration<double>(Clock::now() - start).count(); };
    const Inputs inputs;
    Tally sum;
    std::uint64_t runs = 0;
    while (!HasFailure() && (seconds > 0.0 ? took() < seconds : runs < kRuns)) {
        const std::uint64_t seed = firstSeed + runs++;
        // Before the run, which may end the process.
        std::printf("%sseed %llu", runs > 1 ? ", " : "", static_cast<unsigned long long>(seed));
        std::fflush(stdout);
        sum += run(inputs, seed);
    }
    std::puts(HasFailure() ? " has failed" : "");
    print(sum, runs, took());
}

}  // namespace
}  // namespace stress

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc > 1) stress::seconds = std::atof(argv[1]);
    if (argc > 2) stress::firstSeed = std::strtoull(argv[2], nullptr, 10);
    return RUN_ALL_TESTS();
}
