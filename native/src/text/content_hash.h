// Hash of a parameter's bytes, the key of the decode cache. Internal; never stored anywhere.
#pragma once

#include <cstdint>

namespace tw {

// Mixes whole little-endian 8-byte words with the multiplier of MurmurHash3's 64-bit finaliser,
// then the bytes left over as FNV-1a does. Reads each byte once. `bytes` needs no alignment and may
// be null when count is 0. Threads: any; never throws.
std::uint64_t contentHash(const void* bytes, unsigned long count);

}  // namespace tw
