// A whole session with the test module, as the tests of the simulator play it.
#pragma once

#include <string>
#include <vector>

#include "host_sim/host.h"

// Places of the test module's parameters.
inline constexpr int kAmount = 1;
inline constexpr int kText = 2;
inline constexpr int kButton = 3;

// Applies the effect once and uses every part of it once. Returns the problems, and what stopped
// the session if something did.
std::vector<std::string> playSession(const host_sim::Personality& personality);

// Personality whose name asks the test module for a fault.
host_sim::Personality withFault(host_sim::Personality personality, const std::string& fault);
