// TWLUT texts in bytes of any kind, wherever they stand: in 8 bits or in 16-bit units, plain or in
// base64.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "looks/text_tail.h"

namespace looks {

struct FoundText {
    std::string text;          // in 8 bits, for tw::parseEmbeddedText, which may refuse it
    std::uint64_t offset = 0;  // of its first byte, or of the base64 character where that begins
    bool base64 = false;
    bool wide = false;  // 16-bit units
};

// Give it all bytes of a stream, in pieces of any size, then call end(). `report` is called for
// each text in the order in which they end. What begins like a text is one, also where it cannot be
// read; one that was cut off is reported as far as it goes. Base64 may be broken by blanks and line
// ends (they shift its offset), and a text may begin anywhere in it. No more than two texts are
// held at once, of up to 17.2 million characters each.
//
// Threads: one at a time. Throws what strings and `report` throw.
class TextFinder {
public:
    using Report = std::function<void(FoundText&&)>;
    explicit TextFinder(Report report) : report_(std::move(report)) {}

    void take(const char* bytes, std::size_t count);
    void end();

private:
    // The latest bits of a stream.
    struct Bits {
        std::uint64_t low = 0;
        std::uint64_t high = 0;  // those before
        void push(unsigned bits, int count);
        // Whether "TWLUT" ends `over` bits before the latest one.
        bool endInMark(int over) const;
        bool endInWideMark(int over) const;
    };
    // One way in which bytes may hold texts.
    struct Channel {
        bool base64;
        Bits bits;
        std::optional<TextTail> tail;
        std::uint64_t start = 0;  // of the tail's text
    };

    void takeByte(unsigned char byte);
    void takeSextet(unsigned sextet);
    void endBase64();
    void begin(Channel& channel, bool wide, int bitsOver);
    void takeDecoded(Channel& channel, unsigned char byte);
    void finish(Channel& channel);

    Report report_;
    std::uint64_t offset_ = 0;
    Channel plain_{.base64 = false};
    Channel base64_{.base64 = true};
    // Bits of the base64 text in hand that make no byte yet.
    unsigned bits_ = 0;
    int bitCount_ = 0;
};

}  // namespace looks
