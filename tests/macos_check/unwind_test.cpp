#include "macos_check/loader/unwind.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace {

using macho::Address;
using macho::Byte;
using macho::Word;
using Bytes = std::vector<Byte>;

constexpr Word kStart = 0x40;
constexpr Word kEnd = 0x70;

// An __unwind_info with one function from kStart to kEnd, on a regular page.
Bytes infoWith(Word encoding) {
    const Word header[] = {1, 28, 0, 28, 0, 28, 2};
    const Word index[] = {kStart, 52, 52, kEnd, 0, 52};
    Bytes info;
    const auto put = [&info](Word value) {
        for (int shift = 0; shift < 32; shift += 8)
            info.push_back(static_cast<Byte>(value >> shift));
    };
    for (const Word word : header)
        put(word);
    for (const Word word : index)
        put(word);
    put(2);             // a page of whole encodings,
    put(8 | 1u << 16);  // its entries 8 bytes further on: one
    put(kStart);
    put(encoding);
    return info;
}

const Bytes image(0x100);
const Bytes frames(0x100);

// The call-frame instructions of the one record that is registered, without padding.
Bytes instructionsFor(Word encoding) {
    Bytes instructions;
    macho::registerFrames(
        image.data(), infoWith(encoding).data(), frames.data(), [&](const Byte* record) {
            EXPECT_EQ(macho::load<Address>(record + 8),
                      reinterpret_cast<Address>(image.data() + kStart));
            EXPECT_EQ(macho::load<Address>(record + 16), Address{kEnd - kStart});
            EXPECT_EQ(record[24], 0);
            instructions.assign(record + 25, record + 4 + macho::load<Word>(record));
        });
    while (!instructions.empty() && instructions.back() == 0)
        instructions.pop_back();
    return instructions;
}

// CFA rules: 0C register offset. Saved registers: 80 + register, then words below the CFA. The CFA
// of a frame with base pointer (register 6) is 16 above it; the return address (16) is below.

TEST(Unwind, findsRegisters_belowTheBasePointer) {
    // rbx and r14 from two words below it upwards
    EXPECT_EQ(instructionsFor(0x01020000 | 1 | 4 << 3),
              Bytes({0x0C, 6, 16, 0x86, 2, 0x90, 1, 0x83, 4, 0x8E, 3}));
}

TEST(Unwind, findsRegisters_belowTheReturnAddressOfAFrameOfFixedSize) {
    // 5 words, two registers: the first of the six (rbx), then the third of the five left (r14)
    EXPECT_EQ(instructionsFor(0x02050000 | 2 << 10 | (0 * 5 + 2)),
              Bytes({0x0C, 7, 40, 0x90, 1, 0x83, 3, 0x8E, 2}));
}

TEST(Unwind, findsAllSixRegisters_inAnyOrder) {
    // backwards: the last choice each time; 200 words
    EXPECT_EQ(instructionsFor(0x02C80000 | 6 << 10 | 719),
              Bytes({0x0C, 7, 0xC0, 0x0C, 0x90, 1, 0x86, 7, 0x8F, 6, 0x8E, 5, 0x8D, 4, 0x8C, 3,
                     0x83, 2}));
}

TEST(Unwind, handsOnARecordThatTheImageHolds) {
    const Byte* found = nullptr;
    macho::registerFrames(image.data(), infoWith(0x04000020).data(), frames.data(),
                          [&found](const Byte* record) { found = record; });
    EXPECT_EQ(found, frames.data() + 0x20);
}

TEST(Unwind, registersNothing_forAFunctionThatNothingIsToldOf) {
    EXPECT_EQ(instructionsFor(0), Bytes());
}

TEST(Unwind, refuses_aFrameOfUnknownForm) {
    EXPECT_THROW(instructionsFor(0x03000000), std::runtime_error);
}

}  // namespace
