#include <chrono>
#include <cstdio>
#include <ctime>
#include <nlohmann/json.hpp>
#include <thread>

#include "looks/edit_request_reader.h"
#include "native/src/file.h"
#include "native/src/paths.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

constexpr auto kBetweenLooks = std::chrono::milliseconds(200);

std::wstring requestPath() {
    return tw::dataPath(L"edit-request.json");
}

// Nothing when there is no such file. More than a request can hold is not read.
std::optional<std::string> contentsNow() {
    const tw::File file(tw::openFile(requestPath(), "rb"));
    if (!file) return std::nullopt;
    char buffer[4096];
    return std::string(buffer, std::fread(buffer, 1, sizeof buffer, file.get()));
}

// Line feeds and control characters would disturb the terminal.
std::string printable(const std::string& name) {
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            text += c;
            continue;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02X", byte);
        text += escape;
    }
    return text;
}

std::string timeText(std::int64_t milliseconds) {
    const std::time_t seconds = milliseconds / 1000;
    std::tm parts = {};
    char text[64] = "";
    if (::gmtime_r(&seconds, &parts)) {
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &parts);
    }
    return text;
}

void printLine(const looks::EditRequest& request) {
    std::string line = "match " + std::to_string(request.id);
    if (request.name) line += " \"" + printable(*request.name) + "\"";
    if (request.at) line += ", asked for at " + timeText(*request.at);
    if (!request.name || !request.at) line += ", the rest of the request was cut";
    std::printf("%s\n", line.c_str());
}

void printJson(const looks::EditRequest& request) {
    nlohmann::ordered_json json;
    json["id"] = request.id;
    json["name"] = request.name ? nlohmann::ordered_json(*request.name) : nullptr;
    json["at"] = request.at ? nlohmann::ordered_json(*request.at) : nullptr;
    const std::string text =
        json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    std::printf("%s\n", text.c_str());
}

bool isKnown(const looks::EditRequest& request) {
    return request.state == looks::RequestState::kWhole ||
           request.state == looks::RequestState::kCut;
}

// A script that reads the lines must get each one when it comes.
void show(const looks::EditRequest& request, bool json) {
    if (json) {
        printJson(request);
    } else {
        printLine(request);
    }
    std::fflush(stdout);
}

void showOnce(bool json) {
    const std::string path = tw::toUtf8(requestPath());
    const std::optional<std::string> contents = contentsNow();
    if (!contents) throw Failure("there is no edit request in '" + path + "'");
    const looks::EditRequest request = looks::readEditRequest(*contents);
    if (request.state == looks::RequestState::kUnfinished) {
        throw Failure("the edit request in '" + path + "' is not written to its end");
    }
    if (!isKnown(request)) throw Failure("'" + path + "' holds no edit request");
    show(request, json);
}

[[noreturn]] void watch(bool json) {
    std::optional<std::string> last;
    for (;; std::this_thread::sleep_for(kBetweenLooks)) {
        const std::optional<std::string> contents = contentsNow();
        if (!contents || contents == last) continue;
        const looks::EditRequest request = looks::readEditRequest(*contents);
        if (request.state == looks::RequestState::kUnfinished) continue;
        last = contents;
        if (isKnown(request)) {
            show(request, json);
        } else {
            std::fprintf(stderr, "tintwell-host: '%s' holds no edit request\n",
                         tw::toUtf8(requestPath()).c_str());
        }
    }
}

}  // namespace

void runRequests(const RequestsOptions& options) {
    if (options.once) {
        showOnce(options.json);
    } else {
        watch(options.json);
    }
}

}  // namespace program
