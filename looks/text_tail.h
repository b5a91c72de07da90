// One TWLUT text as its bytes arrive.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace looks {

// Blanks and line ends.
inline bool isSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// Takes the bytes behind a "TWLUT" until the text is complete or comes to an end. Internal to
// TextFinder. Threads: one at a time.
class TextTail {
public:
    explicit TextTail(bool wide);

    // Not to be called any more once the text has ended.
    void take(unsigned char byte);
    // The stream has ended.
    void end();

    bool ended() const { return ended_; }
    bool wide() const { return wide_; }
    // Whether what ended is a text: "TWLUT" is followed by a form, which is a digit or a P.
    bool isText() const { return text_.size() > kMark; }
    // Whether its head, at least, can be read. A text of another head ends nowhere in particular.
    bool isReadable() const { return readable_; }
    // All characters, narrow, without blanks in the data. The text are the first used() of them;
    // others were taken along.
    const std::string& characters() const { return text_; }
    std::size_t used() const { return used_; }
    // The character that ended it without being part of it, if one did. It stands for all that no
    // text can go on with.
    const std::string& rejected() const { return rejected_; }
    // How many blanks were left out before used().
    std::size_t blanks() const { return blanks_; }

private:
    static constexpr std::size_t kMark = 5;

    void takeCharacter(char character);
    void takeOfHead(char character);
    void takeOfData(char character);
    void takeBlank(char blank);
    bool isOfHead(char character) const;
    void endHead();
    bool readHead();
    void countData();
    bool nextTextEndsAt(std::size_t end) const;

    bool wide_;
    bool ended_ = false;
    bool readable_ = true;
    // Of a 16-bit unit the low byte that waits for its high one; the mark's last letter waits as
    // one that is in the text already.
    std::optional<char> low_;
    bool markWaits_;
    std::string text_;
    std::size_t used_ = kMark;
    std::string rejected_;
    std::size_t dataStart_ = 0;   // 0: not known yet
    std::size_t dataWanted_ = 0;  // characters of the alphabet that are still to come
    std::size_t blanks_ = 0;      // left out of the data
    std::size_t unbroken_ = 0;    // where the characters begin that follow the last of them
};

}  // namespace looks
