// Packed files, and projects of the published shapes with looks in them.
#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/luts.h"

namespace program_test {

using Members = std::vector<std::pair<std::string, std::string>>;

// The bytes of an archive that `open` sets up. Memory is enough for what tests pack.
template <typename Open>
std::string packed(const Members& members, Open open) {
    std::string bytes(1 << 24, '\0');
    std::size_t used = 0;
    archive* writer = archive_write_new();
    open(writer);
    archive_write_open_memory(writer, bytes.data(), bytes.size(), &used);
    for (const auto& [name, content] : members) {
        archive_entry* entry = archive_entry_new();
        archive_entry_set_pathname(entry, name.c_str());
        archive_entry_set_filetype(entry, AE_IFREG);
        archive_entry_set_perm(entry, 0644);
        archive_entry_set_size(entry, static_cast<la_int64_t>(content.size()));
        archive_write_header(writer, entry);
        archive_write_data(writer, content.data(), content.size());
        archive_entry_free(entry);
    }
    archive_write_close(writer);
    archive_write_free(writer);
    bytes.resize(used);
    return bytes;
}

inline std::string zip(const Members& members) {
    return packed(members, [](archive* writer) { archive_write_set_format_zip(writer); });
}

inline std::string gzip(const std::string& content) {
    return packed({{"content", content}}, [](archive* writer) {
        archive_write_add_filter_gzip(writer);
        archive_write_set_format_raw(writer);
        archive_write_set_bytes_in_last_block(writer, 1);
    });
}

inline std::string lookText(std::uint64_t seed, long id, const std::string& name, int size = 3) {
    return tw::toEmbeddedText(twtest::scatteredLut(size, seed), id, name);
}

inline std::string wide(const std::string& text) {
    std::string bytes;
    for (const char character : text)
        bytes += {character, '\0'};
    return bytes;
}

inline std::string base64(const std::string& bytes) {
    return twtest::encodeBase64({bytes.begin(), bytes.end()});
}

// A chunk of a RIFX container, with the byte that makes its length even.
inline std::string chunk(const std::string& id, const std::string& content) {
    const auto size = static_cast<std::uint32_t>(content.size());
    std::string bytes = id;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(size >> shift & 0xFF);
    return bytes + content + std::string(content.size() % 2, '\0');
}

// A project after the published shape of After Effects: parameters lie in lists in one another.
inline std::string afterEffectsProject(const std::vector<std::string>& values) {
    std::string list = "tdgp";
    for (const std::string& value : values) {
        list += chunk("tdmn", std::string("TNWL Tintwell-0002", 18));
        list += chunk("LIST", "tdbs" + chunk("tdsb", "\x01") +
                                  chunk("tdb4", std::string(124, '\3')) + chunk("arbd", value));
    }
    return chunk("RIFX", "Egg!" + chunk("head", "odd") + chunk("LIST", list));
}

// A project after the published shape of Premiere Pro: one clip with one Tintwell, whose keyframes
// hold `values`; the first of them is the start value.
inline std::string premiereProject(const std::vector<std::string>& values) {
    std::string keyframes;
    for (const std::string& value : values)
        keyframes += "254016000000," + base64(value) + ",0,0;";
    return R"(<?xml version="1.0" encoding="UTF-8" ?>
<PremiereData Version="3">
  <VideoClipTrackItem ObjectID="10" ClassID="368b0406" Version="8">
    <ClipTrackItem Version="8">
      <ComponentOwner Version="1"><Components ObjectRef="20"/></ComponentOwner>
      <SubClip ObjectRef="30"/>
    </ClipTrackItem>
  </VideoClipTrackItem>
  <VideoComponentChain ObjectID="20" Version="3">
    <ComponentChain><Components><Component Index="0" ObjectRef="40"/></Components></ComponentChain>
  </VideoComponentChain>
  <SubClip ObjectID="30"><Clip ObjectRef="31"/><Name>A001 &amp; B.mov</Name></SubClip>
  <VideoFilterComponent ObjectID="40" Version="9">
    <Component><Params><Param Index="1" ObjectRef="50"/></Params>
      <DisplayName>Tintwell</DisplayName></Component>
    <MatchName>AE.TNWL Tintwell</MatchName>
  </VideoFilterComponent>
  <ArbVideoComponentParam ObjectID="50" Version="3">
    <Name>LUT</Name>
    <StartKeyframeValue Encoding="base64" BinaryHash="1">)" +
           base64(values.front()) + R"(</StartKeyframeValue>
    <Keyframes>)" +
           keyframes + R"(</Keyframes>
  </ArbVideoComponentParam>
</PremiereData>
)";
}

}  // namespace program_test
