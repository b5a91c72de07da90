#include "looks/text_finder.h"

#include <utility>

#include "native/src/base64.h"

namespace looks {
namespace {

constexpr std::uint64_t kMark = 0x54574C5554;  // "TWLUT"
constexpr std::uint64_t kMarkBits = (std::uint64_t{1} << 40) - 1;
// The same in 16-bit units, up to the last letter: its lower 64 bits, and the T before them.
constexpr std::uint64_t kWideMark = 0x0057004C00550054;
constexpr std::uint64_t kWideMarkTop = 0x54;

// Gives the characters from `at` on to the tail until it ends; returns the first one not given.
std::size_t takeAgain(TextTail& tail, const std::string& characters, std::size_t at) {
    if (tail.wide()) tail.take(0);
    while (at < characters.size() && !tail.ended()) {
        tail.take(static_cast<unsigned char>(characters[at++]));
        if (tail.wide() && !tail.ended()) tail.take(0);
    }
    return at;
}

}  // namespace

void TextFinder::Bits::push(unsigned bits, int count) {
    high = high << count | low >> (64 - count);
    low = low << count | bits;
}

bool TextFinder::Bits::endInMark(int over) const {
    return ((low >> over) & kMarkBits) == kMark;
}

bool TextFinder::Bits::endInWideMark(int over) const {
    const std::uint64_t latest = over == 0 ? low : low >> over | high << (64 - over);
    return latest == kWideMark && ((high >> over) & 0xFF) == kWideMarkTop;
}

void TextFinder::take(const char* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, ++offset_) {
        const char character = bytes[i];
        takeByte(static_cast<unsigned char>(character));
        if (const int sextet = tw::sextetOf(character); sextet >= 0) {
            takeSextet(static_cast<unsigned>(sextet));
        } else if (!isSpace(character)) {
            endBase64();
        }
    }
}

void TextFinder::end() {
    for (Channel* channel : {&plain_, &base64_}) {
        if (!channel->tail) continue;
        channel->tail->end();
        finish(*channel);
    }
}

void TextFinder::takeByte(unsigned char byte) {
    plain_.bits.push(byte, 8);
    if (plain_.tail) {
        takeDecoded(plain_, byte);
    } else if (byte == 'T') {
        if (plain_.bits.endInMark(0)) {
            begin(plain_, false, 0);
        } else if (plain_.bits.endInWideMark(0)) {
            begin(plain_, true, 0);
        }
    }
}

void TextFinder::takeSextet(unsigned sextet) {
    base64_.bits.push(sextet, 6);
    if (base64_.tail) {
        bits_ = bits_ << 6 | sextet;
        bitCount_ += 6;
        if (bitCount_ < 8) return;
        bitCount_ -= 8;
        takeDecoded(base64_, static_cast<unsigned char>(bits_ >> bitCount_ & 0xFF));
        return;
    }
    for (const int over : {0, 2, 4}) {
        const bool narrow = base64_.bits.endInMark(over);
        if (!narrow && !base64_.bits.endInWideMark(over)) continue;
        bits_ = sextet;
        bitCount_ = over;
        begin(base64_, !narrow, over);
    }
}

void TextFinder::endBase64() {
    base64_.bits = {};
    if (!base64_.tail) return;
    base64_.tail->end();
    finish(base64_);
}

void TextFinder::begin(Channel& channel, bool wide, int bitsOver) {
    channel.tail.emplace(wide);
    const auto markBits = static_cast<unsigned>(wide ? 72 : 40);
    const unsigned characters =
        channel.base64 ? (markBits + static_cast<unsigned>(bitsOver) + 5) / 6 : markBits / 8;
    channel.start = offset_ + 1 - characters;
}

void TextFinder::takeDecoded(Channel& channel, unsigned char byte) {
    channel.tail->take(byte);
    if (channel.tail->ended()) finish(channel);
}

// What the text took along behind its end is looked through for the next one; a mark that is not
// complete yet is still among the channel's bits.
void TextFinder::finish(Channel& channel) {
    std::string pending;
    bool ended = true;
    while (ended) {
        const TextTail tail = std::move(*channel.tail);
        channel.tail.reset();
        const std::string& all = tail.characters();
        const std::size_t mark = all.find("TWLUT", tail.used());
        if (tail.isText()) {
            const std::size_t length = tail.isReadable() ? tail.used() : mark;
            report_({all.substr(0, length), channel.start, channel.base64, tail.wide()});
        }
        pending.insert(0, all.substr(tail.used()) + tail.rejected());
        const std::size_t next = pending.find("TWLUT");
        if (next == std::string::npos) return;
        const std::size_t bytes = (tail.used() + tail.blanks() + next) * (tail.wide() ? 2 : 1);
        channel.start += channel.base64 ? bytes * 4 / 3 : bytes;
        channel.tail.emplace(tail.wide());
        const std::size_t taken = takeAgain(*channel.tail, pending, next + 5);
        ended = taken < pending.size() || channel.tail->ended();
        pending.erase(0, taken);
    }
}

}  // namespace looks
