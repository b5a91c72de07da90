// TWLUT texts in any bytes. Whatever is found begins with the mark and stands where it is said to,
// and how the stream is cut does not matter.
#include "looks/text_finder.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "fuzz/require.h"
#include "looks/look_list.h"

namespace {

using looks::FoundText;
using twfuzz::require;

std::vector<FoundText> find(const char* bytes, std::size_t count, std::size_t piece) {
    std::vector<FoundText> texts;
    looks::TextFinder finder([&texts](FoundText&& text) { texts.push_back(std::move(text)); });
    for (std::size_t at = 0; at < count; at += piece)
        finder.take(bytes + at, std::min(piece, count - at));
    finder.end();
    return texts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t count) {
    const auto* bytes = reinterpret_cast<const char*>(data);
    const std::vector<FoundText> texts = find(bytes, count, count + 1);
    const std::vector<FoundText> pieces = find(bytes, count, 3);
    require(texts.size() == pieces.size(), "a cut stream has as many texts");
    looks::LookList list;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        require(texts[i].text.starts_with("TWLUT"), "a text begins with the mark");
        require(texts[i].text == pieces[i].text, "a cut stream has the same texts");
        require(texts[i].offset == pieces[i].offset, "a cut stream has them in the same places");
        require(texts[i].base64 || bytes[texts[i].offset] == 'T', "a plain text stands there");
        list.add(texts[i], i);
    }
    return 0;
}
