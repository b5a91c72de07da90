#include "macos_check/loader/unwind.h"

#include <array>
#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <stdexcept>
#include <vector>

#include "native/src/never_destroyed.h"

namespace macho {
namespace {

// An encoding: how a function's frame lies, whether it has exception tables, and which routine
// reads them.
constexpr Word kHasTables = 0x40000000;
constexpr Word kModeMask = 0x0F000000;
constexpr Word kFramePointer = 0x01000000;
constexpr Word kFixedSize = 0x02000000;
constexpr Word kDwarf = 0x04000000;

Word personalityOf(Word encoding) {
    return encoding >> 28 & 3;
}

// The registers that a function must keep, as encodings number them from 1, in DWARF's numbers.
constexpr std::array<Byte, 7> kKeptRegisters = {0, 3, 12, 13, 14, 15, 6};
constexpr Byte kFramePointerRegister = 6;
constexpr Byte kStackPointerRegister = 7;
constexpr Byte kReturnAddress = 16;

// DWARF call-frame instructions.
constexpr Byte kDefineCfa = 0x0C;
constexpr Byte kSavedAt = 0x80;  // plus the register

struct Function {
    Word start = 0;  // from the image's beginning, as is the next
    Word end = 0;
    Word encoding = 0;
    Word tables = 0;  // exception tables; 0: none
};

// The pages of functions behind the index.
class FunctionTable {
public:
    explicit FunctionTable(const Byte* info) : info_(info) {
        const Word index = word(20);
        const Word count = word(24);
        for (Word i = 0; i + 1 < count; ++i) {
            readTables(word(index + 12 * i + 8), word(index + 12 * (i + 1) + 8));
            readPage(word(index + 12 * i), word(index + 12 * i + 4));
        }
        encodings_[word(index + 12 * (count - 1))] = 0;  // where the last function ends
    }

    std::vector<Function> functions() const {
        std::vector<Function> found;
        for (auto at = encodings_.begin(); std::next(at) != encodings_.end(); ++at) {
            const auto tables = tables_.find(at->first);
            const bool has = (at->second & kHasTables) && tables != tables_.end();
            found.push_back(
                {at->first, std::next(at)->first, at->second, has ? tables->second : 0});
        }
        return found;
    }

private:
    Word word(std::size_t at) const { return load<Word>(info_ + at); }
    std::uint16_t half(std::size_t at) const { return load<std::uint16_t>(info_ + at); }

    void readTables(Word at, Word end) {
        for (; at < end; at += 8)
            tables_[word(at)] = word(at + 4);
    }

    void readPage(Word firstFunction, Word page) {
        constexpr Word regular = 2;
        const Word entries = page + half(page + 4);
        const Word count = half(page + 6);
        for (Word i = 0; i < count; ++i) {
            if (word(page) == regular) {
                encodings_[word(entries + 8 * i)] = word(entries + 8 * i + 4);
            } else {
                const Word entry = word(entries + 4 * i);
                encodings_[firstFunction + (entry & 0xFFFFFF)] = encodingAt(page, entry >> 24);
            }
        }
    }

    // The common encodings are numbered first, then those of the page.
    Word encodingAt(Word page, Word number) const {
        const Word common = word(8);
        if (number < common) return word(word(4) + 4 * number);
        return word(page + half(page + 8) + 4 * (number - common));
    }

    const Byte* info_;
    std::map<Word, Word> encodings_;
    std::map<Word, Word> tables_;
};

// Call-frame records under construction.
class Records {
public:
    std::size_t size() const { return bytes_.size(); }
    const Byte* at(std::size_t offset) const { return bytes_.data() + offset; }

    void byte(unsigned value) { bytes_.push_back(static_cast<Byte>(value)); }
    template <class Value>
    void value(Value value) {
        const std::size_t end = bytes_.size();
        bytes_.resize(end + sizeof value);
        std::memcpy(bytes_.data() + end, &value, sizeof value);
    }
    void text(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }

    // A record begins with its length, which is known at its end. Padding is "no operation".
    std::size_t open() {
        value(Word{0});
        return bytes_.size();
    }
    void close(std::size_t start) {
        while ((bytes_.size() - start) % 8 != 4)
            byte(0);
        const auto length = static_cast<Word>(bytes_.size() - start);
        std::memcpy(bytes_.data() + start - sizeof length, &length, sizeof length);
    }

private:
    std::vector<Byte> bytes_;
};

// Where the i-th saved register is for a permutation of `count` of the six: the number counts
// through the choices left, the first register's being the most significant.
std::vector<Byte> permutedRegisters(Word permutation, Word count) {
    std::vector<Byte> left(kKeptRegisters.begin() + 1, kKeptRegisters.end());
    std::vector<Byte> chosen;
    for (Word i = 0; i < count; ++i) {
        Word divisor = 1;
        for (Word j = i + 1; j < count; ++j)
            divisor *= 6 - j;
        const auto choice = left.begin() + static_cast<std::ptrdiff_t>(permutation / divisor);
        permutation %= divisor;
        chosen.push_back(*choice);
        left.erase(choice);
    }
    return chosen;
}

// Frames with a base pointer: up to five registers from `slots` words below it upwards.
void describeFramePointer(Records& out, Word encoding) {
    const Word slots = encoding >> 16 & 0xFF;
    for (unsigned value :
         {unsigned{kDefineCfa}, unsigned{kFramePointerRegister}, 16u,
          unsigned{kSavedAt} + kFramePointerRegister, 2u, unsigned{kSavedAt} + kReturnAddress, 1u})
        out.byte(value);
    for (Word i = 0; i < 5; ++i) {
        const Word number = encoding >> (3 * i) & 7;
        if (number == 0) continue;
        out.byte(unsigned{kSavedAt} + kKeptRegisters.at(number));
        out.byte(2 + slots - i);
    }
}

// Frames of a fixed size: the registers lie right below the return address.
void describeFixedSize(Records& out, Word encoding) {
    const Word words = encoding >> 16 & 0xFF;
    const Word count = encoding >> 10 & 7;
    out.byte(kDefineCfa);
    out.byte(kStackPointerRegister);
    const Word size = words * 8;  // up to 2040: one or two groups of 7 bits
    if (size >= 0x80) out.byte((size & 0x7F) | 0x80);
    out.byte(size >= 0x80 ? size >> 7 : size);
    out.byte(unsigned{kSavedAt} + kReturnAddress);
    out.byte(1);
    Word slot = 1 + count;
    for (const Byte kept : permutedRegisters(encoding & 0x3FF, count)) {
        out.byte(unsigned{kSavedAt} + kept);
        out.byte(slot--);
    }
}

class FrameWriter {
public:
    FrameWriter(const Byte* image, const Byte* info) : image_(image), info_(info) {}

    void write(const Function& function) {
        const Word mode = function.encoding & kModeMask;
        if (mode != kFramePointer && mode != kFixedSize)
            throw std::runtime_error("a function's frame is of a form that is not known");
        const Word personality = personalityOf(function.encoding);
        const std::size_t shared = sharedRecord(personality);
        frames_.push_back(out_.size());
        const std::size_t start = out_.open();
        out_.value(static_cast<Word>(out_.size() - shared));
        out_.value(reinterpret_cast<Address>(image_ + function.start));
        out_.value(Address{function.end - function.start});
        out_.byte(personality ? 8 : 0);
        if (personality)
            out_.value(function.tables ? reinterpret_cast<Address>(image_ + function.tables)
                                       : Address{0});
        if (mode == kFramePointer)
            describeFramePointer(out_, function.encoding);
        else
            describeFixedSize(out_, function.encoding);
        out_.close(start);
    }

    // Once nothing is added any more, so that the records stay where they are.
    void registerAll(const RegisterFrame& registerFrame) {
        out_.value(Word{0});
        for (const std::size_t frame : frames_)
            registerFrame(out_.at(frame));
    }

private:
    // What frames with the same routine have in common: the CIE, by its offset.
    std::size_t sharedRecord(Word personality) {
        const auto found = shared_.find(personality);
        if (found != shared_.end()) return found->second;
        const std::size_t offset = out_.size();
        const std::size_t start = out_.open();
        out_.value(Word{0});
        out_.byte(1);
        using namespace std::string_view_literals;
        out_.text(personality ? "zPLR\0"sv : "zR\0"sv);
        out_.byte(1);     // code is counted in bytes,
        out_.byte(0x78);  // saved registers downwards in eights
        out_.byte(kReturnAddress);
        out_.byte(personality ? 11 : 1);
        if (personality) {
            const Word list = load<Word>(info_ + 12);
            const Word pointer = load<Word>(info_ + list + 4 * (personality - 1));
            out_.byte(0);  // absolute, as all addresses in the records
            out_.value(load<Address>(image_ + pointer));
            out_.byte(0);
        }
        out_.byte(0);
        out_.close(start);
        return shared_[personality] = offset;
    }

    const Byte* image_;
    const Byte* info_;
    Records out_;
    std::map<Word, std::size_t> shared_;
    std::vector<std::size_t> frames_;
};

}  // namespace

void registerFrames(const Byte* image, const Byte* info, const Byte* frames,
                    const RegisterFrame& registerFrame) {
    static tw::NeverDestroyed<std::deque<FrameWriter>> kept;  // one an image
    FrameWriter& writer = kept->emplace_back(image, info);
    for (const Function& function : FunctionTable(info).functions()) {
        const Word mode = function.encoding & kModeMask;
        if (mode == kDwarf)
            registerFrame(frames + (function.encoding & 0xFFFFFF));
        else if (mode != 0)
            writer.write(function);
    }
    writer.registerAll(registerFrame);
}

}  // namespace macho
