#include "tintwell_host/jobs/job_record.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <nlohmann/json.hpp>

#include "tintwell_host/files/output_file.h"

namespace program {
namespace {

using Json = nlohmann::ordered_json;
using Clock = std::chrono::system_clock;

const char* nameOf(FrameState state) {
    switch (state) {
        case FrameState::kRendered:
            return "rendered";
        case FrameState::kSkipped:
            return "skipped";
        case FrameState::kFailed:
            return "failed";
    }
    return "";
}

// Names that are not UTF-8 are shown as well as they can be.
std::string textOf(const Json& json, int indent) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json describe(const FrameResult& result) {
    Json json = {{"frame", result.task.frame},
                 {"state", nameOf(result.state)},
                 {"file", result.task.out},
                 {"seconds", result.seconds}};
    if (!result.reason.empty()) json["reason"] = result.reason;
    return json;
}

std::string utc(Clock::time_point time) {
    const std::time_t seconds = Clock::to_time_t(time);
    std::tm parts = {};
    ::gmtime_r(&seconds, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

}  // namespace

JobRecord::JobRecord(std::size_t total, bool isSequence, ProgressKind progress)
    : total_(total),
      isSequence_(isSequence),
      kind_(progress),
      progress_(progress == ProgressKind::kBar ? total : 0) {}

void JobRecord::add(const FrameResult& result) {
    results_.push_back(result);
    // A clip's length is known for certain at its end only.
    total_ = std::max(total_, results_.size());
    if (isSequence_ && !result.reason.empty()) {
        progress_.clear();
        std::fprintf(stderr, "tintwell-host: %s\n", result.reason.c_str());
    }
    progress_.show(results_.size());
    if (kind_ != ProgressKind::kLines) return;
    Json json = describe(result);
    json["done"] = results_.size();
    json["total"] = total_;
    const std::string line = textOf(json, -1);
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

std::size_t JobRecord::count(FrameState state) const {
    return static_cast<std::size_t>(
        std::count_if(results_.begin(), results_.end(),
                      [state](const FrameResult& result) { return result.state == state; }));
}

void JobRecord::fail(const Failure& failure) {
    failure_ = failure;
}

Failure JobRecord::ending(int signal) const {
    if (failure_) return *failure_;
    const std::size_t failed = count(FrameState::kFailed);
    if (failed > 0) {
        // A failure that may pass comes first: then the job is worth another try.
        const auto worst = std::max_element(results_.begin(), results_.end(),
                                            [](const FrameResult& a, const FrameResult& b) {
                                                const auto rank = [](const FrameResult& result) {
                                                    if (result.state != FrameState::kFailed)
                                                        return 0;
                                                    return result.exit == Exit::kTryAgain ? 2 : 1;
                                                };
                                                return rank(a) < rank(b);
                                            });
        if (!isSequence_) return Failure(worst->reason, worst->exit);
        return Failure(std::to_string(failed) + " of " + std::to_string(total_) +
                           " frames could not be rendered",
                       worst->exit);
    }
    if (signal == 0) return Failure("");
    // A clip may not say how many it has.
    const bool isKnown = results_.size() < total_;
    return Failure("stopped after " + std::to_string(results_.size()) +
                       (isKnown ? " of " + std::to_string(total_) : "") + " frames",
                   signal == SIGINT ? Exit::kInterrupted : Exit::kTerminated);
}

void JobRecord::finish(int signal) const {
    const Failure failure = ending(signal);
    if (*failure.what() != '\0') throw Failure(failure);
}

void JobRecord::writeReport(const std::string& path, int signal) const {
    const Failure failure = ending(signal);
    const std::string sentence = failure.what();
    const std::chrono::duration<double> taken = Clock::now() - started_;
    Json json = {{"started", utc(started_)},
                 {"seconds", taken.count()},
                 {"exit", sentence.empty() ? 0 : static_cast<int>(failure.exit())},
                 {"frames", total_},
                 {"rendered", count(FrameState::kRendered)},
                 {"skipped", count(FrameState::kSkipped)},
                 {"failed", count(FrameState::kFailed)},
                 {"not begun", total_ - results_.size()}};
    if (!sentence.empty()) json["reason"] = sentence;
    Json& results = json["results"] = Json::array();
    for (const FrameResult& result : results_)
        results.push_back(describe(result));
    writeWhole(path, textOf(json, 2));
}

}  // namespace program
