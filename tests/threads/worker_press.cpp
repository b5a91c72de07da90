// The buttons of a worker's own effect.
#include <gtest/gtest.h>

#include "tests/support/request_line.h"
#include "tests/threads/stress_worker.h"

namespace stress {

using tw::LutFileResult;
using twtest::kEditButton;
using twtest::kLut;
using twtest::kLutButton;

void Worker::pressLutButton() {
    const bool cancels = random_.below(4) == 0;
    const CubeFile& file = any(inputs().files());
    tally_.logs("USER_CHANGED_PARAM index 3");
    tally_.logs("LUT button: dialog in \"" + shared_.lutFolder() + "\"");
    if (cancels) {
        tally_.logs("LUT button: cancelled");
        tally_.did("LUT button: cancelled");
    } else {
        pickFile(file);
    }
    SharedHost::pick(cancels ? "" : file.path);
    EXPECT_EQ(own_.instance->press(kLutButton).error, 0);
    EXPECT_EQ(shared_.host().handles().contents(own_.instance->arbitrary(kLut)), own_.look->bytes);
    EXPECT_EQ(own_.instance->label(kLutButton), ownLabel_);
    renderOwn();
}

// The expected results of picking it.
void Worker::pickFile(const CubeFile& file) {
    switch (file.result) {
        case LutFileResult::kLoaded:
            own_.look = &file.look;
            ownLabel_ = file.look.label;
            tally_.logs("LUT button: loaded " + file.path + " (2^3, " +
                        std::to_string(file.look.bytes.size()) + " bytes)");
            mayLogLabel(file.look, "picked");
            mayLogLabel(file.look, "update");
            tally_.did("LUT button: loaded");
            break;
        case LutFileResult::kUnreadable:
            tally_.logs("LUT button: could not read " + file.path + ": " + file.reason);
            tally_.shows({"Tintwell could not read this LUT:\n" + file.path, true});
            tally_.did("LUT button: refused");
            break;
        case LutFileResult::kForeignDomain:
            tally_.logs("LUT button: " + file.path + " has a domain other than 0..1");
            tally_.shows({"Tintwell only takes LUTs with a 0..1 domain.", true});
            tally_.did("LUT button: refused");
            break;
    }
}

void Worker::pressEditButton() {
    const std::lock_guard lock(shared_.requestMutex());
    tally_.logs("USER_CHANGED_PARAM index 4");
    EXPECT_EQ(own_.instance->press(kEditButton).error, 0);
    const tw::Lut3D& lut = own_.look->lut;
    if (lut.id > 0) {
        tally_.logs("Edit LUT: requested match " + std::to_string(lut.id) + " (" + lut.name + ")");
        tally_.did("Edit LUT: requested");
        readRequest(*own_.look);
        return;
    }
    tally_.logs("Edit LUT: no match ID");
    tally_.shows(
        {"This LUT wasn't made in the Tintwell panel (or was made before Tintwell kept its "
         "matches), so there is no match to open. Make one in the panel and press Apply.",
         false});
    tally_.did("Edit LUT: no match");
}

void Worker::readRequest(const Look& look) {
    const std::string line = twtest::readFile(shared_.requestFile());
    EXPECT_TRUE(twtest::isRequest(line, look.lut.id, look.lut.name)) << line;
}

}  // namespace stress
