// Exceptions inside a mapped image: macOS describes frames in a compact form of its own, which is
// turned into the call-frame records that unwinders elsewhere read.
#pragma once

#include <functional>

#include "macos_check/loader/bytes.h"

namespace macho {

// Told of one record (an FDE with its CIE before it in memory), which stays valid.
using RegisterFrame = std::function<void(const Byte* record)>;

// `info` is the image's __unwind_info and `frames` its __eh_frame, both where they are mapped;
// pointers of the image are already bound. Throws std::runtime_error for a frame that cannot be
// described. The records are kept to the end of the process.
void registerFrames(const Byte* image, const Byte* info, const Byte* frames,
                    const RegisterFrame& registerFrame);

}  // namespace macho
