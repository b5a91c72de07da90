// A user's whole session with the effect, which must work in any environment.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "native/src/lut_engine.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/stand_in_dialogs.h"

namespace twtest {

// Every entry below a folder, with what plain files hold and where links lead.
std::map<std::string, std::string> treeOf(const std::string& folder);

class UserSession : public EffectTest {
protected:
    UserSession();

    // The host starts, the effect is applied, a file is refused, a look is picked, pictures are
    // rendered before and after, the match is asked for, the project is saved and opened again, the
    // host ends. Fails the test unless all of it works as usual: a file that the effect cannot
    // read or write must not affect anything else.
    void run();

    // Folder in which the dialogs of the last session opened.
    const std::string& dialogFolder() const { return dialogFolder_; }

    // The log lines of a session, without the times, and those that are in the log now; none when
    // there is no such file.
    Lines wholeLog() const;
    static Lines logAt(const std::string& file);
    Lines log() const { return logAt(home.dataFile("effect.log")); }

    // Whether a file holds the session's request, and nothing else.
    static testing::AssertionResult holdsRequest(const std::string& file);
    testing::AssertionResult hasRequest() const {
        return holdsRequest(home.dataFile("edit-request.json"));
    }

    std::string fallbackFolder() const { return home / "Documents/Tintwell LUTs"; }

private:
    void refuseAFile(host_sim::Instance& effect);
    void pickALook(host_sim::Instance& effect);
    void render(host_sim::Instance& effect, const tw::Lut3D* look);
    void askForTheMatch(host_sim::Instance& effect);
    void saveAndLoad(host_sim::Instance& effect);
    void pick(const std::string& file);

    TempFolder work_;  // the user's files
    std::string bad_ = work_ / "bad.cube";
    std::string look_ = work_ / "Film.cube";
    std::string cube_;
    std::string text_;  // what the look is in the parameter
    StandInDialogs* dialogs_ = nullptr;
    std::string dialogFolder_;
};

}  // namespace twtest
