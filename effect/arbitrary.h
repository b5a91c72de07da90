// The LUT parameter's data: the TWLUT text in a host handle, as 16-bit little-endian units (8-bit
// text of ten bytes or more is accepted and kept as it is). The host owns the handle and calls back
// for everything that is to be done with its contents; the flat form in projects is the handle's
// bytes.
//
// Threads: any, several at once. May throw what strings and vectors throw; the handles that were
// locked are then unlocked.
#pragma once

#include <cstddef>

#include "effect/effect_interface.h"

namespace tw_effect {

// Whether `size` bytes count as TWLUT text: 10 bytes or more that begin with "TWLUT", as bytes or
// as 16-bit units. Nothing beyond that is looked at.
bool LooksEmbedded(const void* bytes, std::size_t size);

// A new handle that means "no LUT" (12 bytes), the caller's to pass to the host; null when the host
// has no memory.
PF_Handle NewEmptyArb(const PF_InData& host);

// A new handle with the source's bytes, or one that means "no LUT" when the source is null, cannot
// be locked or holds no TWLUT text. Null when the host has no memory.
PF_Handle CopyArb(const PF_InData& host, PF_Handle source);

// PF_Cmd_ARBITRARY_CALLBACK. PF_Err_NONE, or PF_Err_CANNOT_PARSE_KEYFRAME_TEXT from a scan of text
// that is no TWLUT text, which leaves the output handle unwritten. A failed allocation is no error:
// the host gets the null handle.
PF_Err Arbitrary(const PF_InData& host, const PF_ArbParamsExtra& call);

}  // namespace tw_effect
