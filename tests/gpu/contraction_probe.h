// Which products and sums the system's Metal device fuses, fast maths off: what the kernel's two
// pragmas are for.
#pragma once

#include <string>
#include <vector>

namespace twtest {

struct ContractionProbe {
    const char* name;  // how the text asks
    bool ran = false;
    bool fused = false;
    std::string error;  // when it has not run
};

// One small kernel for each: "one expression", "two statements", "METAL pragma", "STDC pragma",
// "fma", "fma under both pragmas". Empty without a device.
std::vector<ContractionProbe> probeContraction();

}  // namespace twtest
