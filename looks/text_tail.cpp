#include "looks/text_tail.h"

#include <algorithm>
#include <string_view>

#include "native/src/base64.h"
#include "native/src/lut_text.h"

namespace looks {
namespace {

// The mark and a form.
constexpr std::size_t kShortest = 6;

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

// Control characters, and what ends a value in markup and in quotes. Names are percent-encoded.
bool endsValue(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return (byte < 0x20 && !isSpace(character)) || byte == 0x7F ||
           std::string_view("<>\"'").find(character) != std::string_view::npos;
}

}  // namespace

TextTail::TextTail(bool wide) : wide_(wide), markWaits_(wide), text_("TWLUT") {}

void TextTail::take(unsigned char byte) {
    if (!wide_) {
        takeCharacter(static_cast<char>(byte));
    } else if (!markWaits_ && !low_) {
        low_ = static_cast<char>(byte);
    } else if (byte != 0) {
        end();
    } else if (markWaits_) {
        markWaits_ = false;
    } else {
        const char character = *low_;
        low_.reset();
        takeCharacter(character);
    }
}

void TextTail::end() {
    takeCharacter('\0');
}

void TextTail::takeCharacter(char character) {
    if (dataStart_ == 0) {
        takeOfHead(character);
    } else {
        takeOfData(character);
    }
}

bool TextTail::isOfHead(char character) const {
    if (!isText()) return isDigit(character) || character == 'P';
    if (text_[kMark] == 'P') {
        return isSpace(character) || isDigit(character) || character == '-' || character == '+';
    }
    return !endsValue(character);
}

void TextTail::takeOfHead(char character) {
    if (!isOfHead(character)) {
        rejected_ = character;
        endHead();
        return;
    }
    text_.push_back(character);
    const char form = text_[kMark];
    const bool headIsDue = text_.size() == tw::kShortHead || text_.size() == tw::kLongHead;
    if (headIsDue && readHead()) {
        ended_ = dataWanted_ == 0;
    } else if (form == '0' || (form > '3' && form <= '9') || text_.size() == tw::kLongHead) {
        endHead();
    }
}

// Without data, the text ends with its form or its number: what follows was taken along, and may
// hold the next text.
void TextTail::endHead() {
    ended_ = true;
    if (readHead()) return;
    const char form = isText() ? text_[kMark] : '\0';
    readable_ = form == '0' || form == 'P';
    used_ = form == 'P' ? text_.size() : std::min(text_.size(), kShortest);
}

bool TextTail::readHead() {
    const std::optional<tw::EmbeddedData> data = tw::embeddedData(text_);
    if (!data) return false;
    dataStart_ = data->start;
    dataWanted_ = data->characters;
    countData();
    return true;
}

// The data that came along with the head.
void TextTail::countData() {
    for (used_ = dataStart_; used_ < text_.size() && dataWanted_ > 0; ++used_) {
        if (text_[used_] == '=') dataWanted_ = 0;
        if (tw::sextetOf(text_[used_]) >= 0) --dataWanted_;
        if (nextTextEndsAt(used_)) {
            used_ -= kShortest;
            dataWanted_ = 0;
            return;
        }
    }
}

// Whether a blank at `end` makes what stands before it the beginning of another text: then this one
// was cut off. The letters alone may be data.
bool TextTail::nextTextEndsAt(std::size_t end) const {
    if (end < std::max(dataStart_, unbroken_) + kShortest ||
        (end < text_.size() && !isSpace(text_[end])))
        return false;
    const std::string_view last = std::string_view(text_).substr(end - kShortest, kShortest);
    return last.starts_with("TWLUT") &&
           std::string_view("123P").find(last[kMark]) != std::string_view::npos;
}

void TextTail::takeOfData(char character) {
    used_ = text_.size();
    if (isSpace(character)) {
        takeBlank(character);
    } else if (tw::sextetOf(character) < 0) {
        rejected_ = character;
        ended_ = true;
    } else {
        text_.push_back(character);
        used_ = text_.size();
        ended_ = --dataWanted_ == 0;
    }
}

void TextTail::takeBlank(char blank) {
    if (nextTextEndsAt(text_.size())) {
        used_ -= kShortest;
        text_.push_back(blank);
        ended_ = true;
    } else {
        ++blanks_;
        unbroken_ = text_.size();
    }
}

}  // namespace looks
