// What a rendered file was made of, in 32 hexadecimal digits.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace program {

// The same for the same parts in the same order, on every machine.
std::string fingerprint(const std::vector<std::string_view>& parts);

}  // namespace program
