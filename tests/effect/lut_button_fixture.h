// The effects of a press of the LUT button: on the parameter, the log, the label and the alerts.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/effect/button_fixture.h"

namespace twtest {

using Alerts = std::vector<ShownAlert>;

inline constexpr char kPressed[] = "USER_CHANGED_PARAM index 3";

class LutButton : public twtest::ButtonTest {
protected:
    std::string dialogLine() const {
        return "LUT button: dialog in \"" + path("Documents/Tintwell LUTs") + "\"";
    }

    // The press changes nothing but the log and the alerts.
    void expectUnchanged(const host_sim::CommandResult& result, PF_Err error = PF_Err_NONE) {
        EXPECT_EQ(result.error, error);
        EXPECT_EQ(result.changed, std::vector<int>());
        EXPECT_EQ(result.out.out_flags, 0);
        EXPECT_EQ(lutBytes(), widened("TWLUT0"));
        EXPECT_EQ(effect().updates().size(), 0u);
        EXPECT_EQ(label(), "Change LUT");
    }

    void expectUnreadable(const std::string& file, const std::string& reason) {
        expectUnchanged(pickFile(file));
        EXPECT_EQ(log(), (Lines{kPressed, dialogLine(),
                                "LUT button: could not read " + file + ": " + reason}));
        EXPECT_EQ(dialogs().alerts, (Alerts{{"Tintwell could not read this LUT:\n" + file, true}}));
    }

    void expectForeignDomain(const std::string& domainLines) {
        const std::string file = write("x.cube", cube(2, domainLines));
        expectUnchanged(pickFile(file));
        EXPECT_EQ(log(), (Lines{kPressed, dialogLine(),
                                "LUT button: " + file + " has a domain other than 0..1"}));
        EXPECT_EQ(dialogs().alerts,
                  (Alerts{{"Tintwell only takes LUTs with a 0..1 domain.", true}}));
    }

    // What the effect stores for a .cube text under a name.
    static Bytes expectedBytes(const std::string& text, long id, const std::string& name) {
        tw::Lut3D lut;
        EXPECT_TRUE(tw::parseCube(text, lut, nullptr));
        return widened(tw::toEmbeddedText(lut, id, name));
    }

    void expectLoaded(const std::string& fileName, const std::string& text, long id,
                      const std::string& name) {
        const host_sim::CommandResult result = pickFile(write(fileName, text));
        EXPECT_EQ(result.error, PF_Err_NONE);
        EXPECT_EQ(result.changed, std::vector<int>{kLut});
        EXPECT_EQ(result.out.out_flags, kRefresh);
        EXPECT_EQ(lutBytes(), expectedBytes(text, id, name));
        EXPECT_EQ(dialogs().alerts, Alerts());
    }
};

}  // namespace twtest
