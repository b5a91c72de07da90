// The tables of the suites that GPU filters ask for; they answer from the open GpuSide.
#pragma once

#include "host_sim/suites/suite_ledger.h"

namespace host_sim {

// Filters may keep these suites: their use by an instance need not balance.
void offerGpuSuites(SuiteLedger& ledger);

}  // namespace host_sim
