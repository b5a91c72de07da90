#include "tests/effect/flow_test.h"

#include <filesystem>
#include <regex>
#include <sstream>

#include "tests/effect/stand_in_module.h"
#include "tests/effect/tested_module.h"

namespace twtest {
namespace fs = std::filesystem;

Bytes stored(const std::string& text) {
    Bytes bytes;
    for (const char c : text) {
        bytes.push_back(static_cast<std::uint8_t>(c));
        bytes.push_back(0);
    }
    return bytes;
}

std::string cube(int size, const std::string& lines) {
    std::string text = lines + "LUT_3D_SIZE " + std::to_string(size) + "\n";
    for (int point = 0; point < size * size * size; ++point) {
        text += point % 2 == 0 ? "0 0 0\n" : "1 1 1\n";
    }
    return text;
}

std::string cubeOfBytes(int size, std::size_t bytes) {
    const std::string text = cube(size);
    return "#" + std::string(bytes - text.size() - 2, 'x') + "\n" + text;
}

Lines logLines(const std::string& text) {
    static const std::regex time("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d  ");
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        line = std::regex_replace(line, time, "");
        if (!line.starts_with("Arb ")) lines.push_back(line);
    }
    return lines;
}

FlowTest::FlowTest() {
    host_ = std::make_unique<host_sim::Host>(testedModule(), host_sim::premierePro());
    host_->start();
    effect_ = &host_->apply();
    dialogs_ = &dialogsOf(host_->module());
    *dialogs_ = {};
    log();
}

std::string FlowTest::write(const std::string& name, const std::string& contents) const {
    const fs::path file = path(name);
    fs::create_directories(file.parent_path());
    writeFile(file, contents);
    return file;
}

Lines FlowTest::log() {
    const std::string whole = readFile(dataPath("effect.log"));
    const std::string fresh = whole.substr(logRead_);
    logRead_ = whole.size();
    return logLines(fresh);
}

host_sim::CommandResult FlowTest::pickFile(const std::string& file) {
    dialogs().pick = [file] { return file; };
    return effect().press(kLutButton);
}

}  // namespace twtest
