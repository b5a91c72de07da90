// The stored values that write_stored_values writes.
#pragma once

#include <string>
#include <vector>

namespace stored_values {

struct Value {
    std::string name;  // of its file
    std::string bytes;
};

// Every form of the text, in 8 and in 16 bits.
std::vector<Value> allValues();

}  // namespace stored_values
