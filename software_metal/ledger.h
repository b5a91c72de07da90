// The process-wide books behind control.h.
#pragma once

#include <functional>
#include <string>

#include "software_metal/control.h"

namespace software_metal {

// Changes the counts under the ledger's lock, which is taken last of all.
void count(const std::function<void(Counts&)>& change);
// Whether a call that this switch concerns is to fail. Counts it.
bool takesFault(bool Faults::*which);
void misuse(const std::string& sentence);
// A job that a queue's thread has before it, and its end.
void jobBegins();
void jobEnds();
bool flushesSubnormals();

}  // namespace software_metal
