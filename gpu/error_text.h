// The words with which a call of the compute backend fails.
#pragma once

#include <string>

namespace twgpu {

// Puts `stage`, if there is one, and `reason` into *err, when it is given; without memory for them
// it becomes empty. Called where an autorelease pool is open: an exception that left it would leave
// its objects behind.
void setErrorText(std::string* err, const char* reason, const char* stage = "") noexcept;

}  // namespace twgpu
