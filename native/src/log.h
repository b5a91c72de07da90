// The diagnostic log: one timestamped line per event in "effect.log" in the data folder.
#pragma once

namespace tw {

// Appends "<local time>  <message>\n"; printf conventions. The message is cut at 1023 bytes. The
// data folder is created when only it is missing; lines that cannot be written are dropped
// silently. Throws what strings and locks throw, with the lock released.
//
// Threads: any; lines never interleave. Lock order: the log's mutex is the innermost lock of the
// plug-in, the only one that may be taken while another is held.
__attribute__((format(printf, 1, 2))) void logLine(const char* format, ...);

}  // namespace tw
