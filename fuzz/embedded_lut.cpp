// The decode cache. The input names a few parameter contents and the order in which they are met,
// each time at another address; a list of what was kept says what every lookup must give.
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "native/src/lut_cache.h"
#include "native/src/lut_text.h"
#include "tests/support/luts.h"

namespace {

using twfuzz::Input;
using twfuzz::require;
using SharedLut = std::shared_ptr<const tw::Lut3D>;

constexpr std::size_t kKept = 8;
constexpr int kMostLooks = 40;

// The content in a buffer of exactly its size, at any alignment.
SharedLut lookUp(const std::string& content, std::size_t shift, std::string* error) {
    const std::string memory = std::string(shift, '#') + content;
    const std::vector<char> exact(memory.begin(), memory.end());
    return tw::embeddedLut(exact.data() + shift, content.size(), error);
}

// What decoding gives, message included, without the cache.
SharedLut decode(const std::string& content, std::string& error) {
    const std::string text = tw::embeddedText(content.data(), content.size());
    if (text.empty()) {
        error = "parameter does not hold TWLUT text";
        return nullptr;
    }
    tw::Lut3D lut;
    if (!tw::parseEmbeddedText(text, lut, &error)) return nullptr;
    if (lut.size == 0 && lut.probe == 0) return nullptr;
    return std::make_shared<const tw::Lut3D>(lut);
}

// The cache as it should be. Holding the objects keeps their addresses from being given out anew.
class Expected {
public:
    Expected() = default;
    Expected(const Expected&) = delete;
    Expected& operator=(const Expected&) = delete;
    // Pushes everything out, so that the next input finds nothing of this one, by contents that no
    // input can make, as they begin with 40 hyphens.
    ~Expected() {
        static unsigned long count = 0;
        for (std::size_t i = 0; i < kKept; ++i)
            meet(std::string(40, '-') + std::to_string(++count), 0);
    }

    void meet(const std::string& content, std::size_t shift) {
        const std::string untouched = "untouched";
        std::string error = untouched;
        const SharedLut lut = lookUp(content, shift, &error);
        if (content.size() < 6) {
            require(!lut && error == untouched, "fewer than six bytes are nothing");
        } else if (const Decoded* kept = find(content)) {
            require(lut == kept->lut, "the very same object");
            require(error == untouched, "no message from what is kept");
        } else {
            decoded(content, lut, error);
        }
    }

private:
    struct Decoded {
        std::string content;
        SharedLut lut;
    };

    // Among the contents that were decoded last.
    const Decoded* find(const std::string& content) const {
        for (std::size_t back = 1; back <= std::min(kKept, decoded_.size()); ++back) {
            const Decoded& kept = decoded_[decoded_.size() - back];
            if (kept.content == content) return &kept;
        }
        return nullptr;
    }

    void decoded(const std::string& content, const SharedLut& lut, const std::string& error) {
        std::string message = "untouched";
        const SharedLut expected = decode(content, message);
        require(error == message, "\"" + error + "\" is \"" + message + "\"");
        require((lut == nullptr) == (expected == nullptr), "a LUT or none");
        if (lut) require(twtest::sameLut(*expected, *lut), "the record");
        for (const Decoded& other : decoded_)
            require(!lut || lut != other.lut, "an object of its own");
        decoded_.push_back({content, lut});
    }

    std::vector<Decoded> decoded_;
};

// Mostly texts that parse or nearly do; the others are the input's bytes as they are.
std::string takeContent(Input& input) {
    const std::uint32_t kind = input.below(8);
    const std::string bytes = input.bytes(input.below(32));
    if (kind == 0) return bytes;
    if (kind == 1) return "TWLUT0" + bytes;
    if (kind == 2) return "TWLUTP " + bytes;
    const float value = static_cast<float>(input.byte()) / 16.0f;
    std::string text = tw::toEmbeddedText(twtest::constantLut(value), input.byte(), bytes);
    if (kind == 3) text.resize(text.size() - std::min(bytes.size(), text.size()));
    if (kind == 4) text += bytes;
    if (kind < 6) return text;
    const std::vector<std::uint16_t> units = tw::toUtf16(text);
    return std::string(reinterpret_cast<const char*>(units.data()), units.size() * 2) + bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    std::vector<std::string> contents;
    for (std::uint32_t count = 1 + input.below(16); count > 0; --count)
        contents.push_back(takeContent(input));
    Expected expected;
    for (int looks = 0; looks < kMostLooks && !input.empty(); ++looks) {
        const std::string& content = contents[input.below(16) % contents.size()];
        expected.meet(content, input.below(9));
    }
    return 0;
}
