// One frame from its file through the effect into its file.
#pragma once

#include <optional>
#include <string>

#include "tintwell_host/jobs/manifest.h"
#include "tintwell_host/jobs/memory_budget.h"
#include "tintwell_host/jobs/sequence_job.h"
#include "tintwell_host/session/effect_session.h"

namespace program {

struct FrameOptions {
    std::optional<Depth> depth;  // none: as the file has it
    std::string compression;     // by checkCompression()
    bool skipExisting = false;   // leave files that are whole and were made from the same
    std::string madeBy;          // look and options, which go into every fingerprint
};

// Threads: any.
class FrameRenderer {
public:
    // `out` is the whole job's output. All references must outlive this.
    FrameRenderer(EffectSession& session, MemoryBudget& memory, const FrameOptions& options,
                  const std::string& out);

    // Never throws: what fails is in the result.
    FrameResult render(const FrameTask& task);

private:
    void renderInto(FrameResult& result);
    // Whether the output is there, whole, and of this fingerprint; else `reason` tells about one
    // that is there.
    bool isUpToDate(const std::string& out, const std::string& fingerprint, std::string& reason);

    EffectSession& session_;
    MemoryBudget& memory_;
    FrameOptions options_;
    Manifest manifest_;
};

}  // namespace program
