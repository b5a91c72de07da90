// Plays sessions of a host with the whole effect module, as random as the bytes they are read from.
#include "fuzz/session/play.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    session_fuzz::playSession(bytes, size);
    return 0;
}
