#include "macos_check/loader/fixups.h"

#include <stdexcept>

namespace macho {
namespace {

constexpr Address kPointerBytes = 8;

enum Rebase : Byte {
    kRebaseDone = 0x00,
    kRebaseType = 0x10,
    kRebaseSegment = 0x20,
    kRebaseSkip = 0x30,
    kRebaseSkipPointers = 0x40,
    kRebaseTimes = 0x50,
    kRebaseManyTimes = 0x60,
    kRebaseThenSkip = 0x70,
    kRebaseManyThenSkip = 0x80,
};

enum Bind : Byte {
    kBindDone = 0x00,
    kBindLibrary = 0x10,
    kBindLibraryNumber = 0x20,
    kBindSpecialLibrary = 0x30,
    kBindSymbol = 0x40,
    kBindType = 0x50,
    kBindAddend = 0x60,
    kBindSegment = 0x70,
    kBindSkip = 0x80,
    kBindOnce = 0x90,
    kBindThenSkip = 0xA0,
    kBindThenSkipPointers = 0xB0,
    kBindManyThenSkip = 0xC0,
};

template <class Fix>
void repeat(Address& at, Address count, Address skip, Fix fix) {
    for (; count > 0; --count) {
        fix(reinterpret_cast<Address*>(at));
        at += kPointerBytes + skip;
    }
}

}  // namespace

void applyRebases(std::span<const Byte> program, const std::vector<Address>& segments,
                  Address slide) {
    Address at = 0;
    const auto fix = [slide](Address* pointer) { *pointer += slide; };
    const Byte* next = program.data();
    while (next < program.data() + program.size()) {
        const Address immediate = *next & 0x0Fu;
        switch (*next++ & 0xF0u) {
            case kRebaseDone:
            case kRebaseType:
                break;
            case kRebaseSegment:
                at = segments.at(immediate) + loadUleb(next);
                break;
            case kRebaseSkip:
                at += loadUleb(next);
                break;
            case kRebaseSkipPointers:
                at += immediate * kPointerBytes;
                break;
            case kRebaseTimes:
                repeat(at, immediate, 0, fix);
                break;
            case kRebaseManyTimes:
                repeat(at, loadUleb(next), 0, fix);
                break;
            case kRebaseThenSkip:
                repeat(at, 1, loadUleb(next), fix);
                break;
            case kRebaseManyThenSkip: {
                const Address count = loadUleb(next);
                repeat(at, count, loadUleb(next), fix);
                break;
            }
            default:
                throw std::runtime_error("unknown rebase instruction");
        }
    }
}

void applyBinds(std::span<const Byte> program, const std::vector<Address>& segments,
                const Resolve& resolve) {
    Address at = 0;
    std::string_view symbol;
    std::int64_t addend = 0;
    const auto fix = [&](Address* pointer) {
        *pointer = reinterpret_cast<Address>(resolve(symbol)) + static_cast<Address>(addend);
    };
    const Byte* next = program.data();
    while (next < program.data() + program.size()) {
        const Address immediate = *next & 0x0Fu;
        switch (*next++ & 0xF0u) {
            case kBindDone:  // ends one symbol, not the program, where pointers are bound lazily
            case kBindLibrary:
            case kBindSpecialLibrary:
            case kBindType:
                break;
            case kBindLibraryNumber:
                loadUleb(next);
                break;
            case kBindSymbol:
                symbol = reinterpret_cast<const char*>(next);
                next += symbol.size() + 1;
                break;
            case kBindAddend:
                addend = loadSleb(next);
                break;
            case kBindSegment:
                at = segments.at(immediate) + loadUleb(next);
                break;
            case kBindSkip:
                at += loadUleb(next);
                break;
            case kBindOnce:
                repeat(at, 1, 0, fix);
                break;
            case kBindThenSkip:
                repeat(at, 1, loadUleb(next), fix);
                break;
            case kBindThenSkipPointers:
                repeat(at, 1, immediate * kPointerBytes, fix);
                break;
            case kBindManyThenSkip: {
                const Address count = loadUleb(next);
                repeat(at, count, loadUleb(next), fix);
                break;
            }
            default:
                throw std::runtime_error("unknown bind instruction");
        }
    }
}

}  // namespace macho
