// What makes a mapped image ready to run: its pointers into itself and into other libraries.
#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "macos_check/loader/bytes.h"

namespace macho {

// Where an import is, by its linker name ("_fopen"). Never null.
using Resolve = std::function<void*(std::string_view name)>;

// The rebase and bind opcodes of LC_DYLD_INFO. `segments` are the addresses at which the segments
// are mapped, in the order of the load commands; all pointers must be writable. Throw
// std::runtime_error for an unknown opcode.
//
// applyRebases: adds `slide` to every pointer that the opcodes name.
void applyRebases(std::span<const Byte> opcodes, const std::vector<Address>& segments,
                  Address slide);
// applyBinds: stores the import's address in every pointer that the opcodes name.
void applyBinds(std::span<const Byte> opcodes, const std::vector<Address>& segments,
                const Resolve& resolve);

}  // namespace macho
