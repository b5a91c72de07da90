// Times work beside a plain copy of the same bytes.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <limits>

namespace bench {

// Seconds that one call takes, as the mean over `calls` of them.
template <typename Work>
double secondsPerCall(int calls, Work work) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i)
        work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    return taken.count() / calls;
}

// The benchmark's loop (registered with UseManualTime): rounds of `calls` calls of `work`, each
// round followed by one of `reference`, so that both run under the same load. Reports,
// from the quickest round of each, which other programs have disturbed least: the time of one of
// the `units` that a call works on, in nanoseconds, under `unitName`; and the ratio of the two,
// work by reference, under `ratioName`.
template <typename Work, typename Reference>
void measureBeside(benchmark::State& state, int calls, double units, const char* unitName,
                   const char* ratioName, Work work, Reference reference) {
    double worked = std::numeric_limits<double>::infinity();
    double referred = worked;
    for (auto _ : state) {
        const double seconds = secondsPerCall(calls, work);
        state.SetIterationTime(seconds);
        worked = std::min(worked, seconds);
        referred = std::min(referred, secondsPerCall(calls, reference));
    }
    state.counters[unitName] = worked * 1e9 / units;
    state.counters[ratioName] = worked / referred;
}

}  // namespace bench
