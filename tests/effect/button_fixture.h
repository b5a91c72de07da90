// What the tests of the buttons and the label share: an applied effect in Premiere Pro, and
// stand-ins for the dialogs.
#pragma once

#include <filesystem>
#include <string>

#include "tests/support/cube_texts.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/stand_in_dialogs.h"
#include "tests/support/stand_in_module.h"
#include "tests/support/texts.h"

namespace twtest {

class ButtonTest : public EffectTest {
protected:
    void SetUp() override {
        effect_ = &start(host_sim::premierePro());
        dialogs_ = &dialogsOf(host->module());
        *dialogs_ = {};
        newLogLines();
    }

    // A file in the home; the folders on the way are made.
    std::string write(const std::string& name, const std::string& contents) const {
        const std::filesystem::path file = path(name);
        std::filesystem::create_directories(file.parent_path());
        writeFile(file, contents);
        return file;
    }
    std::string path(const std::string& name) const { return home / name; }

    // What was logged since the last call, but for the data callbacks.
    Lines log() { return withoutDataCallbacks(newLogLines()); }

    // Presses the LUT button and picks that file.
    host_sim::CommandResult pickFile(const std::string& file) {
        dialogs().pick = [file] { return file; };
        return effect().press(kLutButton);
    }

    host_sim::Instance& effect() { return *effect_; }
    StandInDialogs& dialogs() { return *dialogs_; }
    Bytes lutBytes() { return host->handles().contents(effect().arbitrary(kLut)); }
    std::string label() { return effect().label(kLutButton); }

private:
    host_sim::Instance* effect_ = nullptr;
    StandInDialogs* dialogs_ = nullptr;
};

}  // namespace twtest
