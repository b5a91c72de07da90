// What has become of a job's frames so far: for the terminal, for a program that reads lines, and
// for the report.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tintwell_host/jobs/progress.h"
#include "tintwell_host/jobs/sequence_job.h"

namespace program {

enum class ProgressKind { kBar, kLines };

// Threads: one at a time.
class JobRecord {
public:
    JobRecord(std::size_t total, bool isSequence, ProgressKind progress);

    // Shows the progress, and on standard error the reason of a frame of a sequence that failed or
    // was made anew.
    void add(const FrameResult& result);

    // What ended the job as a whole.
    void fail(const Failure& failure);

    // The way in which the job ends: throws Failure when it or a frame failed, or for a `signal`:
    // the one that stopped it before its end, 0 for none.
    void finish(int signal) const;

    // Writes the report as JSON. Throws Failure.
    void writeReport(const std::string& path, int signal) const;

private:
    std::size_t count(FrameState state) const;
    // What finish() throws; a sentence without words: nothing.
    Failure ending(int signal) const;

    std::vector<FrameResult> results_;
    std::size_t total_;
    std::optional<Failure> failure_;
    bool isSequence_;
    ProgressKind kind_;
    Progress progress_;
    std::chrono::system_clock::time_point started_ = std::chrono::system_clock::now();
};

}  // namespace program
