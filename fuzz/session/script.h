// A session as bytes. Made so that a changed byte changes one command and not all that follow it.
//
// A script is a row of records, each ended by the byte 0xFF or by the end of the input. In a record
// the byte 0xFE takes the next byte as it is, so that every byte can be written. The first record
// says how the host starts (run_session.cpp), every other one is a command: a letter that names it
// (steps.cpp), then its choices in the order in which the command asks for them, and what is
// left is its text. A choice that is missing reads as 0. make_seeds.py writes such scripts by name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/input.h"

namespace session_fuzz {

using Bytes = std::vector<std::uint8_t>;

// What one command takes its choices from. A view of the record's bytes.
class Record : public twfuzz::Input {
public:
    explicit Record(const Bytes& bytes) : Input(bytes.data(), bytes.size()) {}

    // 0 .. count - 1, for counts of at most 256.
    int below(int count) {
        return static_cast<int>(Input::below(static_cast<std::uint32_t>(count)));
    }
    // 0 .. count - 1, always from two bytes: a place in a text, whose length another choice makes.
    std::size_t place(std::size_t count) { return number<std::uint16_t>() % count; }
};

// At most `most` records; what follows them is passed over.
std::vector<Bytes> recordsOf(const std::uint8_t* bytes, std::size_t size, std::size_t most);

}  // namespace session_fuzz
