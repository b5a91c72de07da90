#include "host_sim/values/project.h"

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <system_error>

#include "host_sim/values/error.h"

namespace host_sim {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Json = nlohmann::json;

constexpr const char* kFormat = "simulated host project";
constexpr int kFormatVersion = 1;

[[noreturn]] void fail(const std::filesystem::path& file, const std::string& what) {
    throw ProjectError("The project file " + file.string() + " " + what + ".");
}

// FNV-1a, so that a flipped bit anywhere in the body is noticed.
std::uint64_t checksum(const Bytes& bytes) {
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const std::uint8_t byte : bytes)
        sum = (sum ^ byte) * 0x100000001B3;
    return sum;
}

Json toJson(const SavedParam& param) {
    Json json = {{"id", param.id}, {"type", param.type}, {"name", param.name}};
    if (param.type == PF_Param_FLOAT_SLIDER) json["number"] = param.number;
    if (param.flat) json["flat"] = Json::binary(*param.flat);
    return json;
}

SavedParam paramFromJson(const Json& json) {
    SavedParam param;
    param.id = json.at("id").get<A_long>();
    param.type = json.at("type").get<PF_ParamType>();
    param.name = json.at("name").get<std::string>();
    param.number = json.value("number", 0.0);
    if (json.contains("flat")) param.flat = Bytes(json.at("flat").get_binary());
    return param;
}

Bytes bodyOf(const SavedEffect& effect) {
    Json body = {{"matchName", effect.matchName}, {"params", Json::array()}};
    for (const SavedParam& param : effect.params)
        body["params"].push_back(toJson(param));
    return Json::to_cbor(body);
}

SavedEffect effectFromBody(const Bytes& bytes) {
    const Json body = Json::from_cbor(bytes);
    SavedEffect effect;
    effect.matchName = body.at("matchName").get<std::string>();
    for (const Json& param : body.at("params"))
        effect.params.push_back(paramFromJson(param));
    return effect;
}

Bytes readAll(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (!stream || (stream.peek() != EOF && !(text << stream.rdbuf())))
        fail(file, "cannot be read");
    const std::string bytes = text.str();
    return {bytes.begin(), bytes.end()};
}

Json parseEnvelope(const std::filesystem::path& file, const Bytes& bytes) {
    constexpr int kUnexpectedEnd = 110;
    try {
        return Json::from_cbor(bytes);
    } catch (const Json::parse_error& error) {
        const bool tooShort = error.id == kUnexpectedEnd && error.byte > bytes.size();
        fail(file, tooShort ? "ends too early" : "is no project of this host");
    }
}

// Whether all of it arrived.
bool writeAll(const std::filesystem::path& file, const Bytes& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream.good();
}

}  // namespace

Bytes projectBytes(const SavedEffect& effect) {
    const Bytes body = bodyOf(effect);
    const Json envelope = {{"format", kFormat},
                           {"version", kFormatVersion},
                           {"checksum", checksum(body)},
                           {"body", Json::binary(body)}};
    return Json::to_cbor(envelope);
}

void writeProject(const std::filesystem::path& file, const SavedEffect& effect) {
    std::filesystem::path temporary = file;
    temporary += ".tmp";
    const bool written = writeAll(temporary, projectBytes(effect));
    std::error_code error;
    if (written) std::filesystem::rename(temporary, file, error);
    if (!written || error) {
        std::filesystem::remove(temporary, error);
        fail(file, written ? "cannot be replaced" : "cannot be written");
    }
}

SavedEffect readProject(const std::filesystem::path& file) {
    const Json envelope = parseEnvelope(file, readAll(file));
    if (!envelope.is_object() || envelope.value("format", Json()) != kFormat) {
        fail(file, "is no project of this host");
    }
    if (envelope.value("version", Json()) != kFormatVersion) fail(file, "has an unknown version");
    try {
        const Bytes body = envelope.at("body").get_binary();
        if (envelope.at("checksum") != checksum(body)) fail(file, "is damaged");
        return effectFromBody(body);
    } catch (const Json::exception&) {
        fail(file, "is damaged");
    }
}

}  // namespace host_sim
