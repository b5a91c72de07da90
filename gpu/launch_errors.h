// Errors that a device reports after a launch was committed.
#pragma once

namespace twgpu {

// Logs "GPU: Metal launch failed: <description>" for the first five errors of the process.
// Swallows whatever goes wrong with that: it is called where nothing may be thrown, on a thread of
// the system.
//
// Threads: any. No lock but the log's.
void reportLaunchError(const char* description) noexcept;

}  // namespace twgpu
