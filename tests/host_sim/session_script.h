// A whole session with the test module, for the simulator's own tests.
#pragma once

#include <string>
#include <vector>

#include "host_sim/host.h"

// Places of the test module's parameters.
inline constexpr int kAmount = 1;
inline constexpr int kText = 2;
inline constexpr int kButton = 3;

// Applies the effect once and uses every part of it once. Returns the problems, with the error that
// stopped the session, if any.
std::vector<std::string> runSession(const host_sim::Personality& personality);

// Personality whose name asks the test module for a fault.
host_sim::Personality withFault(host_sim::Personality personality, const std::string& fault);
