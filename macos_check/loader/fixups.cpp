#include "macos_check/loader/fixups.h"

#include <stdexcept>

namespace macho {
namespace {

constexpr Address kPointerBytes = 8;

// Opcodes by their published names.
enum RebaseOpcode : Byte {
    REBASE_OPCODE_DONE = 0x00,
    REBASE_OPCODE_SET_TYPE_IMM = 0x10,
    REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x20,
    REBASE_OPCODE_ADD_ADDR_ULEB = 0x30,
    REBASE_OPCODE_ADD_ADDR_IMM_SCALED = 0x40,
    REBASE_OPCODE_DO_REBASE_IMM_TIMES = 0x50,
    REBASE_OPCODE_DO_REBASE_ULEB_TIMES = 0x60,
    REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB = 0x70,
    REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB = 0x80,
};

enum BindOpcode : Byte {
    BIND_OPCODE_DONE = 0x00,
    BIND_OPCODE_SET_DYLIB_ORDINAL_IMM = 0x10,
    BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB = 0x20,
    BIND_OPCODE_SET_DYLIB_SPECIAL_IMM = 0x30,
    BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM = 0x40,
    BIND_OPCODE_SET_TYPE_IMM = 0x50,
    BIND_OPCODE_SET_ADDEND_SLEB = 0x60,
    BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB = 0x70,
    BIND_OPCODE_ADD_ADDR_ULEB = 0x80,
    BIND_OPCODE_DO_BIND = 0x90,
    BIND_OPCODE_DO_BIND_ADD_ADDR_ULEB = 0xA0,
    BIND_OPCODE_DO_BIND_ADD_ADDR_IMM_SCALED = 0xB0,
    BIND_OPCODE_DO_BIND_ULEB_TIMES_SKIPPING_ULEB = 0xC0,
};

// Fixes `count` pointers from `at` on, `skip` bytes apart, and leaves `at` behind them.
template <class Fix>
void repeat(Address& at, Address count, Address skip, Fix fix) {
    for (; count > 0; --count) {
        fix(reinterpret_cast<Address*>(at));
        at += kPointerBytes + skip;
    }
}

}  // namespace

void applyRebases(std::span<const Byte> opcodes, const std::vector<Address>& segments,
                  Address slide) {
    Address at = 0;
    const auto fix = [slide](Address* pointer) { *pointer += slide; };
    const Byte* next = opcodes.data();
    while (next < opcodes.data() + opcodes.size()) {
        const Address immediate = *next & 0x0Fu;
        switch (*next++ & 0xF0u) {
            case REBASE_OPCODE_DONE:
            case REBASE_OPCODE_SET_TYPE_IMM:
                break;
            case REBASE_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
                at = segments.at(immediate) + loadUleb(next);
                break;
            case REBASE_OPCODE_ADD_ADDR_ULEB:
                at += loadUleb(next);
                break;
            case REBASE_OPCODE_ADD_ADDR_IMM_SCALED:
                at += immediate * kPointerBytes;
                break;
            case REBASE_OPCODE_DO_REBASE_IMM_TIMES:
                repeat(at, immediate, 0, fix);
                break;
            case REBASE_OPCODE_DO_REBASE_ULEB_TIMES:
                repeat(at, loadUleb(next), 0, fix);
                break;
            case REBASE_OPCODE_DO_REBASE_ADD_ADDR_ULEB:
                repeat(at, 1, loadUleb(next), fix);
                break;
            case REBASE_OPCODE_DO_REBASE_ULEB_TIMES_SKIPPING_ULEB: {
                const Address count = loadUleb(next);
                repeat(at, count, loadUleb(next), fix);
                break;
            }
            default:
                throw std::runtime_error("unknown rebase opcode");
        }
    }
}

void applyBinds(std::span<const Byte> opcodes, const std::vector<Address>& segments,
                const Resolve& resolve) {
    Address at = 0;
    std::string_view symbol;
    std::int64_t addend = 0;
    const auto fix = [&](Address* pointer) {
        *pointer = reinterpret_cast<Address>(resolve(symbol)) + static_cast<Address>(addend);
    };
    const Byte* next = opcodes.data();
    while (next < opcodes.data() + opcodes.size()) {
        const Address immediate = *next & 0x0Fu;
        switch (*next++ & 0xF0u) {
            case BIND_OPCODE_DONE:  // ends one symbol, not the opcodes, where pointers are bound
                                    // lazily
            case BIND_OPCODE_SET_DYLIB_ORDINAL_IMM:
            case BIND_OPCODE_SET_DYLIB_SPECIAL_IMM:
            case BIND_OPCODE_SET_TYPE_IMM:
                break;
            case BIND_OPCODE_SET_DYLIB_ORDINAL_ULEB:
                loadUleb(next);
                break;
            case BIND_OPCODE_SET_SYMBOL_TRAILING_FLAGS_IMM:
                symbol = reinterpret_cast<const char*>(next);
                next += symbol.size() + 1;
                break;
            case BIND_OPCODE_SET_ADDEND_SLEB:
                addend = loadSleb(next);
                break;
            case BIND_OPCODE_SET_SEGMENT_AND_OFFSET_ULEB:
                at = segments.at(immediate) + loadUleb(next);
                break;
            case BIND_OPCODE_ADD_ADDR_ULEB:
                at += loadUleb(next);
                break;
            case BIND_OPCODE_DO_BIND:
                repeat(at, 1, 0, fix);
                break;
            case BIND_OPCODE_DO_BIND_ADD_ADDR_ULEB:
                repeat(at, 1, loadUleb(next), fix);
                break;
            case BIND_OPCODE_DO_BIND_ADD_ADDR_IMM_SCALED:
                repeat(at, 1, immediate * kPointerBytes, fix);
                break;
            case BIND_OPCODE_DO_BIND_ULEB_TIMES_SKIPPING_ULEB: {
                const Address count = loadUleb(next);
                repeat(at, count, loadUleb(next), fix);
                break;
            }
            default:
                throw std::runtime_error("unknown bind opcode");
        }
    }
}

}  // namespace macho
