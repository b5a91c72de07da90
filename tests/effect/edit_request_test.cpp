#include "effect/edit_request_line.h"

#include <chrono>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>
#include <thread>

#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/effect/button_fixture.h"

namespace {

using twtest::kEditButton;
using twtest::kLut;
using twtest::Lines;
using twtest::ShownAlert;
using twtest::widened;
using Alerts = std::vector<ShownAlert>;

constexpr char kPressed[] = "USER_CHANGED_PARAM index 4";

const ShownAlert kNoMatchAlert{
    "This LUT wasn't made in the Tintwell panel (or was made before Tintwell kept its matches), so "
    "there is no match to open. Make one in the panel and press Apply.",
    false};

std::int64_t millisecondsNow() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

std::string lutText(long id, const std::string& name) {
    tw::Lut3D lut;
    EXPECT_TRUE(tw::parseCube(twtest::cube(2), lut, nullptr));
    return tw::toEmbeddedText(lut, id, name);
}

class EditRequest : public twtest::ButtonTest {
protected:
    EditRequest() : file_(home.dataFile("edit-request.json")) {}

    void hold(const std::string& text) { effect().setBytes(kLut, widened(text)); }

    void press() {
        const auto result = effect().press(kEditButton);
        EXPECT_EQ(result.error, PF_Err_NONE);
        EXPECT_EQ(result.changed, std::vector<int>());
        EXPECT_EQ(result.out.out_flags, 0);
    }

    // An older request stays, and the user is told why there is no new one.
    void expectNoMatch() {
        write("Library/Application Support/Tintwell/edit-request.json", "older\n");
        press();
        EXPECT_EQ(log(), (Lines{kPressed, "Edit LUT: no match ID"}));
        EXPECT_EQ(dialogs().alerts, Alerts{kNoMatchAlert});
        EXPECT_EQ(twtest::readFile(file_), "older\n");
    }

    // Presses and returns the request without its time, which must be now.
    std::string requestWithoutTime() {
        const std::int64_t before = millisecondsNow();
        press();
        const std::string line = twtest::readFile(file_);
        std::smatch parts;
        if (!std::regex_search(line, parts, std::regex("\"at\":(\\d+)\\}\n$"))) return line;
        const std::int64_t at = std::stoll(parts[1]);
        EXPECT_GE(at, before);
        EXPECT_LE(at, millisecondsNow());
        return line.substr(0, static_cast<std::size_t>(parts.position(1)));
    }

    std::string file_;
};

// ---- No match

TEST_F(EditRequest, isRefused_withoutAHandle) {
    effect().setNull(kLut);
    expectNoMatch();
}

TEST_F(EditRequest, isRefused_forAFreshEffect) {
    expectNoMatch();
}

TEST_F(EditRequest, isRefused_forForeignBytes) {
    effect().setBytes(kLut, {'n', 'o', 't', 'h', 'i', 'n', 'g', '!'});
    expectNoMatch();
}

TEST_F(EditRequest, isRefused_forALutWithoutMatch) {
    hold(lutText(0, "plain"));
    expectNoMatch();
}

TEST_F(EditRequest, isRefused_forANegativeId) {
    hold(lutText(-7, "odd"));
    expectNoMatch();
}

TEST_F(EditRequest, isRefused_forACalibrationPattern) {
    hold("TWLUTP 8");
    expectNoMatch();
}

TEST_F(EditRequest, isRefused_whenTheHandleCannotBeLocked) {
    hold(lutText(7, "Dusk"));
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    expectNoMatch();
}

// ---- The file

TEST_F(EditRequest, isOneLineForThePanel) {
    hold(lutText(7, "Dusk"));
    EXPECT_EQ(requestWithoutTime(), "{\"id\":7,\"name\":\"Dusk\",\"at\":");
    EXPECT_EQ(log(), (Lines{kPressed, "Edit LUT: requested match 7 (Dusk)"}));
    EXPECT_EQ(dialogs().alerts, Alerts());
    const auto request = nlohmann::json::parse(twtest::readFile(file_));
    EXPECT_EQ(request.size(), 3u);
    EXPECT_EQ(request["id"], 7);
}

TEST_F(EditRequest, escapesQuotesAndBackslashes) {
    hold(lutText(7, "say \"hi\" \\o/"));
    EXPECT_EQ(requestWithoutTime(), R"({"id":7,"name":"say \"hi\" \\o/","at":)");
    EXPECT_EQ(log().back(), "Edit LUT: requested match 7 (say \"hi\" \\o/)");
    EXPECT_EQ(nlohmann::json::parse(twtest::readFile(file_))["name"], "say \"hi\" \\o/");
}

TEST_F(EditRequest, keepsEveryOtherByte) {
    const std::string name = "e\xCC\x81 \t\n\x01 \xF0\x9F\x8E\xA8";
    hold(lutText(7, name));
    EXPECT_EQ(requestWithoutTime(), "{\"id\":7,\"name\":\"" + name + "\",\"at\":");
}

TEST_F(EditRequest, mayHaveAnEmptyNameAndTheLargestId) {
    hold(lutText(9223372036854775807L, ""));
    EXPECT_EQ(requestWithoutTime(), "{\"id\":9223372036854775807,\"name\":\"\",\"at\":");
}

TEST_F(EditRequest, replacesAnOlderOneWhole) {
    hold(lutText(7, "Dusk"));
    write("Library/Application Support/Tintwell/edit-request.json", std::string(5000, 'x'));
    EXPECT_EQ(requestWithoutTime(), "{\"id\":7,\"name\":\"Dusk\",\"at\":");
}

TEST_F(EditRequest, hasALaterTime_whenPressedAgain) {
    hold(lutText(7, "Dusk"));
    press();
    const auto first = nlohmann::json::parse(twtest::readFile(file_));
    std::this_thread::sleep_for(std::chrono::milliseconds(3));
    press();
    const auto second = nlohmann::json::parse(twtest::readFile(file_));
    EXPECT_EQ(second["id"], first["id"]);
    EXPECT_EQ(second["name"], first["name"]);
    EXPECT_GT(second["at"].get<std::int64_t>(), first["at"].get<std::int64_t>());
}

TEST_F(EditRequest, isCutAt599Bytes) {
    const std::string name(399, '"');
    std::string text = lutText(7, "n");
    hold(text.replace(text.find(" n "), 3, " " + name + " "));
    press();
    std::string escaped;
    for (std::size_t i = 0; i < name.size(); ++i)
        escaped += "\\\"";
    EXPECT_EQ(twtest::readFile(file_), ("{\"id\":7,\"name\":\"" + escaped).substr(0, 599));
}

TEST_F(EditRequest, isLostSilently_whenTheFileCannotBeOpened) {
    std::filesystem::create_directory(file_);
    hold(lutText(7, "Dusk"));
    press();
    EXPECT_EQ(log(), (Lines{kPressed, "Edit LUT: requested match 7 (Dusk)"}));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

TEST_F(EditRequest, makesNoFolder) {
    hold(lutText(7, "Dusk"));
    std::filesystem::remove_all(path("Library"));
    press();
    EXPECT_FALSE(std::filesystem::exists(path("Library")));
    EXPECT_EQ(dialogs().alerts, Alerts());
}

// ---- The line by itself

TEST(EditRequestLine, endsAtByte599) {
    const std::string frame = "{\"id\":1,\"name\":\"\",\"at\":2}\n";
    const std::string fitting(599 - frame.size(), 'n');
    EXPECT_EQ(tw_effect::editRequestLine(1, fitting, 2),
              "{\"id\":1,\"name\":\"" + fitting + "\",\"at\":2}\n");
    EXPECT_EQ(tw_effect::editRequestLine(1, fitting + "n", 2),
              "{\"id\":1,\"name\":\"" + fitting + "n\",\"at\":2}");
}

}  // namespace
