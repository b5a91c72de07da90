// No exception crosses into the host, whatever any of the dialogs throws.
#include <exception>
#include <functional>
#include <iterator>
#include <new>
#include <stdexcept>
#include <string>

#include "tests/effect/lut_button_fixture.h"

namespace {

using twtest::cube;
using twtest::kEditButton;
using twtest::kLutButton;

using DialogsThatThrow = twtest::LutButton;

// What an alert or the open panel throws.
struct Throw {
    const char* what;
    std::function<void()> act;
};

const Throw kThrows[] = {
    {"an integer", [] { throw 7; }},
    {"a text", [] { throw "words"; }},
    {"a std::exception", [] { throw std::exception(); }},
    {"a std::runtime_error", [] { throw std::runtime_error("words"); }},
    {"a std::bad_alloc", [] { throw std::bad_alloc(); }},
};

TEST_F(DialogsThatThrow, endAPressWithAnError_fromTheOpenPanel) {
    for (const Throw& thrown : kThrows) {
        SCOPED_TRACE(thrown.what);
        dialogs().pick = [&] { return thrown.act(), std::string(); };
        expectUnchanged(effect().press(kLutButton), PF_Err_INTERNAL_STRUCT_DAMAGED);
    }
}

TEST_F(DialogsThatThrow, endAPressWithAnError_fromBothAlerts) {
    const std::string files[] = {path("no.cube"), write("x.cube", cube(2, "DOMAIN_MAX 1 1 2\n"))};
    for (const Throw& thrown : kThrows) {
        dialogs().acknowledge = thrown.act;
        for (const std::string& file : files) {
            SCOPED_TRACE(file + ": " + thrown.what);
            dialogs().alerts.clear();
            expectUnchanged(pickFile(file), PF_Err_INTERNAL_STRUCT_DAMAGED);
            EXPECT_EQ(dialogs().alerts.size(), 1u);
        }
    }
}

TEST_F(DialogsThatThrow, endAPressWithAnError_fromTheEditButtonsAlert) {
    for (const Throw& thrown : kThrows) {
        SCOPED_TRACE(thrown.what);
        dialogs().acknowledge = thrown.act;
        expectUnchanged(effect().press(kEditButton), PF_Err_INTERNAL_STRUCT_DAMAGED);
    }
    EXPECT_EQ(dialogs().alerts.size(), std::size(kThrows));
}

}  // namespace
