// The edit request. The input is a file's bytes, which a panel may meet at any moment; or a match
// for which the effect writes the request, which must be read as it was meant.
#include <cstdint>
#include <string>

#include "effect/edit_request_line.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "looks/edit_request_reader.h"

namespace {

using looks::EditRequest;
using looks::readEditRequest;
using looks::RequestState;
using twfuzz::require;

bool same(const EditRequest& a, const EditRequest& b) {
    return a.state == b.state && a.id == b.id && a.name == b.name && a.at == b.at;
}

std::string escaped(const std::string& name) {
    std::string text;
    for (const char c : name) {
        if (c == '"' || c == '\\') text += '\\';
        text += c;
    }
    return text;
}

// What was read whole can be written again, and is not to be taken for whole any sooner.
void checkWhole(const EditRequest& request, const std::string& contents) {
    require(request.id >= 1 && request.name && request.at, "a whole request has all members");
    const std::string again = "{\"id\":" + std::to_string(request.id) + ",\"name\":\"" +
                              escaped(*request.name) + "\",\"at\":" + std::to_string(*request.at) +
                              "}\n";
    require(same(readEditRequest(again), request), "what is written again is read again");
    const std::size_t step = contents.size() / 32 + 1;
    for (std::size_t length = 0; length < contents.size(); length += step) {
        const RequestState state = readEditRequest(contents.substr(0, length)).state;
        const RequestState expected = length < looks::kLongestRequest    ? RequestState::kUnfinished
                                      : length == looks::kLongestRequest ? RequestState::kCut
                                                                         : RequestState::kForeign;
        require(state == expected, "the part of " + std::to_string(length) + " bytes");
    }
}

void readBytes(const std::string& contents) {
    const EditRequest request = readEditRequest(contents);
    switch (request.state) {
        case RequestState::kWhole:
            checkWhole(request, contents);
            break;
        case RequestState::kCut:
            require(contents.size() == looks::kLongestRequest && request.id >= 1, "a cut request");
            break;
        case RequestState::kUnfinished:
            require(contents.size() < looks::kLongestRequest, "a request that is being written");
            [[fallthrough]];
        case RequestState::kForeign:
            require(request.id == 0 && !request.name && !request.at, "nothing is known");
    }
}

// The name as the effect's line holds it: to its first zero byte.
void readWritten(std::int64_t id, std::string name, std::int64_t at) {
    name.resize(std::min(name.size(), name.find('\0')));
    const EditRequest request = readEditRequest(tw_effect::editRequestLine(id, name, at));
    // 15 bytes stand round the id before the name, 7 between the name and the time.
    const std::size_t upToName = 15 + std::to_string(id).size() + escaped(name).size();
    const std::size_t whole = upToName + 7 + std::to_string(at).size() + 2;
    require(request.id == id, "the id is read from any line");
    const bool isCut = whole > looks::kLongestRequest;
    require(request.state == (isCut ? RequestState::kCut : RequestState::kWhole), "whole or cut");
    require(request.name.has_value() == (upToName + 1 <= looks::kLongestRequest), "a name");
    require(!request.name || *request.name == name, "the name");
    require(request.at.has_value() == (whole - 1 <= looks::kLongestRequest), "a time");
    require(!request.at || *request.at == at, "the time");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    twfuzz::Input input(data, size);
    if (input.flag()) {
        const auto id = static_cast<std::int64_t>(input.number<std::uint64_t>() >> 1);
        const auto at = input.number<std::int64_t>();
        readWritten(std::max<std::int64_t>(id, 1), input.bytes(800), at);
    } else {
        readBytes(input.rest());
    }
    return 0;
}
