// Times work beside a plain copy of the same bytes.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

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
// round followed by one of `reference`, so that both meet the machine in the same mood. Reports the
// ratio of the two medians, work by reference, under `ratioName`, and the median time of one of the
// `units` that a call works on, in nanoseconds, under `unitName`.
template <typename Work, typename Reference>
void measureBeside(benchmark::State& state, int calls, double units, const char* unitName,
                   const char* ratioName, Work work, Reference reference) {
    std::vector<double> worked;
    std::vector<double> referred;
    for (auto _ : state) {
        worked.push_back(secondsPerCall(calls, work));
        state.SetIterationTime(worked.back());
        referred.push_back(secondsPerCall(calls, reference));
    }
    state.counters[unitName] = median(worked) * 1e9 / units;
    state.counters[ratioName] = median(worked) / median(referred);
}

}  // namespace bench
