// What is not wrong with a look, but worth knowing.
#pragma once

#include <string>
#include <vector>

#include "looks/facts.h"
#include "looks/finding.h"

namespace looks {

// Of the look's numbers.
std::vector<Finding> notesOf(const Facts& facts);

// Of what the 16 bits of the text lost: nothing as long as no picture format can tell.
std::vector<Finding> notesOf(const Precision& precision);

// Of the keywords of a .cube file that the effect passes over.
std::vector<Finding> notesOfTags(const std::string& cube);

}  // namespace looks
