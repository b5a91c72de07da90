// The looks that a file named on the command line stands for.
#pragma once

#include <functional>
#include <string>

#include "looks/check.h"

namespace program {

struct CheckedLook {
    std::string origin;  // the file, and the look's name where it holds several
    looks::Check check;
};

// A .cube file, by its name or because nothing else is in it, is one look; so is a TWLUT text; of
// any other file all looks that are found in it, one after the other, are given to `take`. Throws
// Failure for a file that cannot be read, and what `take` throws.
void checkFile(const std::string& file, const std::function<void(const CheckedLook&)>& take);

// The one look of a file, which must be one that works. Throws Failure, naming all looks where
// there are several.
looks::Check onlyLook(const std::string& file);

}  // namespace program
