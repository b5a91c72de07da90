// The test vectors for makers of a panel, against the effect's own code: what it reads, writes and
// draws is what the vectors say.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>

#include "effect/edit_request_line.h"
#include "looks/edit_request_reader.h"
#include "looks/measure.h"
#include "native/src/lut_cache.h"
#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/support/temp_folder.h"
#include "tintwell_host/files/picture.h"

namespace {

using nlohmann::json;

const std::string kVectors = TINTWELL_VECTORS;

json indexOf(const std::string& folder) {
    return json::parse(twtest::readFile(kVectors + "/" + folder + "/index.json"));
}

std::string contentsOf(const std::string& folder, const json& vector) {
    return twtest::readFile(kVectors + "/" + folder + "/" + vector["file"].get<std::string>());
}

std::string bytesOfHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2)
        bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    return bytes;
}

std::string nameOf(const json& vector) {
    if (!vector["name"].is_null()) return vector["name"];
    return bytesOfHex(vector["name_bytes"]);
}

std::int64_t numberOf(const json& text) {
    return std::stoll(text.get<std::string>());
}

std::vector<float> floatsOf(const json& numbers) {
    std::vector<float> values;
    for (const json& number : numbers)
        values.push_back(static_cast<float>(number.get<double>()));
    return values;
}

// Bit by bit but for the zeros, of which the files hold no negative ones.
void expectSamples(const json& told, const std::vector<float>& found) {
    const std::vector<float> expected = floatsOf(told);
    ASSERT_EQ(expected.size(), found.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(expected[i], found[i]) << "sample " << i;
}

void expectLut(const json& vector, const tw::Lut3D& lut) {
    EXPECT_EQ(lut.id, numberOf(vector["id"]));
    EXPECT_EQ(lut.name, nameOf(vector));
    EXPECT_EQ(lut.size, vector["size"].get<int>());
    expectSamples(vector["samples"], lut.data);
}

void expectValue(const json& vector) {
    SCOPED_TRACE(vector["file"]);
    const std::string bytes = contentsOf("texts", vector);
    std::string message;
    const auto lut = tw::embeddedLut(bytes.data(), bytes.size(), &message);
    EXPECT_EQ(message, vector.value("message", ""));
    const std::string reads = vector["reads"];
    ASSERT_EQ(lut != nullptr, reads == "lut" || reads == "pattern");
    if (reads == "pattern") {
        EXPECT_EQ(lut->probe, vector["size"].get<int>());
    }
    if (reads == "lut") expectLut(vector, *lut);
}

TEST(PanelVectors, valuesAreReadSoByTheEffect) {
    const json values = indexOf("texts")["values"];
    for (const json& vector : values)
        expectValue(vector);
    EXPECT_GT(values.size(), 50u);
}

TEST(PanelVectors, valuesShowEveryMessageOfTheReader) {
    std::set<std::string> messages;
    const json values = indexOf("texts")["values"];
    for (const json& vector : values)
        messages.insert(vector.value("message", ""));
    EXPECT_EQ(messages, (std::set<std::string>{
                            "", "bad calibration pattern size",
                            "not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> "
                            "<data>)",
                            "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)",
                            "LUT size out of range", "LUT data is truncated",
                            "parameter does not hold TWLUT text"}));
}

TEST(PanelVectors, textsAreWrittenSoByTheEffect) {
    const json written = indexOf("texts")["written"];
    for (const json& vector : written) {
        SCOPED_TRACE(vector["about"]);
        tw::Lut3D lut;
        lut.size = vector["size"];
        lut.data = floatsOf(vector["samples"]);
        EXPECT_EQ(
            tw::toEmbeddedText(lut, static_cast<long>(numberOf(vector["id"])), vector["name"]),
            vector["text"].get<std::string>());
    }
    EXPECT_GE(written.size(), 10u);
}

void expectPatches(const json& vector) {
    for (const json& patch : vector["patches"]) {
        const int columns = vector["columns"];
        const int rows = vector["rows"];
        const std::vector<float> colour = floatsOf(patch["colour"]);
        for (const int x : {patch["x"].get<int>(), patch["to_x"].get<int>() - 1}) {
            for (const int y : {patch["y"].get<int>(), patch["to_y"].get<int>() - 1}) {
                float found[3];
                tw::probeColour(vector["size"], columns, rows, vector["width"], vector["height"], x,
                                y, found);
                EXPECT_EQ(colour, (std::vector<float>{found[0], found[1], found[2]}))
                    << "patch " << patch["index"] << " at " << x << "," << y;
            }
        }
    }
}

// In a frame of one row the first patches, a pixel each, show every level of red.
void expectLevels(const json& vector) {
    const int size = vector["size"];
    const int patches = size * size * size;
    const auto samples = static_cast<std::size_t>(patches) * 4;
    std::vector<float> floats(samples);
    tw::fillProbeF(size, {floats.data(), patches, 1, 0, tw::kOrderRGBA});
    std::vector<std::uint8_t> bytes(samples);
    tw::fillProbe8(size, {bytes.data(), patches, 1, 0, tw::kOrderRGBA});
    const std::vector<float> levels = floatsOf(vector["levels"]);
    ASSERT_EQ(levels.size(), static_cast<std::size_t>(size));
    for (std::size_t level = 0; level < levels.size(); ++level) {
        EXPECT_EQ(levels[level], floats[level * 4]) << "level " << level;
        EXPECT_EQ(vector["bytes"][level], bytes[level * 4]) << "level " << level;
    }
}

void expectPicture(const json& vector) {
    const program::Picture picture = program::readPicture(
        kVectors + "/patterns/" + vector["file"].get<std::string>(), program::Depth::k8);
    ASSERT_EQ(picture.width, vector["width"].get<int>());
    ASSERT_EQ(picture.height, vector["height"].get<int>());
    std::vector<std::uint8_t> drawn(picture.bytes.size());
    tw::fillProbe8(vector["size"], {drawn.data(), picture.width, picture.height,
                                    std::int64_t{picture.width} * 4, tw::kOrderRGBA});
    EXPECT_EQ(picture.bytes, drawn);
    int columns = 0;
    int rows = 0;
    tw::probeGrid(vector["size"], picture.width, picture.height, &columns, &rows);
    EXPECT_EQ(vector["columns"].get<int>(), columns);
    EXPECT_EQ(vector["rows"].get<int>(), rows);
}

TEST(PanelVectors, patternsAreDrawnSoByTheEffect) {
    const json patterns = indexOf("patterns")["patterns"];
    for (const json& vector : patterns) {
        SCOPED_TRACE(vector["file"]);
        expectPicture(vector);
        expectPatches(vector);
        expectLevels(vector);
    }
    EXPECT_GT(patterns.size(), 4u);
}

TEST(PanelVectors, gradedPatternsAreMeasuredSo) {
    const json measured = indexOf("patterns")["measured"];
    ASSERT_FALSE(measured.empty());
    for (const json& vector : measured) {
        SCOPED_TRACE(vector["file"]);
        const program::Picture picture = program::readPicture(
            kVectors + "/patterns/" + vector["file"].get<std::string>(), program::Depth::kFloat);
        looks::Measurement measurement;
        std::string reason;
        ASSERT_TRUE(looks::measurePattern({picture.floats.data(), picture.width, picture.height},
                                          {vector["size"], 0, 0}, measurement, reason))
            << reason;
        const std::vector<float> samples = floatsOf(vector["samples"]);
        ASSERT_EQ(samples.size(), measurement.lut.data.size());
        for (std::size_t i = 0; i < samples.size(); ++i)
            EXPECT_NEAR(samples[i], measurement.lut.data[i], 1e-7f) << "sample " << i;
    }
}

TEST(PanelVectors, requestsAreWrittenSoByTheEffectAndReadSo) {
    const json vectors = indexOf("requests")["requests"];
    for (const json& vector : vectors) {
        SCOPED_TRACE(vector["file"]);
        const std::string contents = contentsOf("requests", vector);
        if (vector.contains("written_for")) {
            const json& asked = vector["written_for"];
            EXPECT_EQ(contents, tw_effect::editRequestLine(numberOf(asked["id"]),
                                                           bytesOfHex(asked["name_bytes"]),
                                                           numberOf(asked["at"])));
        }
        const looks::EditRequest request = looks::readEditRequest(contents);
        EXPECT_EQ(looks::wordOf(request.state), vector["state"].get<std::string>());
        EXPECT_EQ(request.id, vector.contains("id") ? numberOf(vector["id"]) : 0);
        ASSERT_EQ(request.name.has_value(), vector.contains("name"));
        if (request.name) {
            EXPECT_EQ(*request.name, nameOf(vector));
        }
        ASSERT_EQ(request.at.has_value(), vector.contains("at"));
        if (request.at) {
            EXPECT_EQ(*request.at, numberOf(vector["at"]));
        }
    }
    EXPECT_GT(vectors.size(), 25u);
}

}  // namespace
