#include <unistd.h>

#include <utility>

#include "effect/lut_file.h"
#include "fuzz/session/process_home.h"
#include "fuzz/session/random_texts.h"
#include "fuzz/session/steps.h"
#include "fuzz/session/violation.h"
#include "native/src/paths.h"

namespace session_fuzz {
namespace {

using tw::LutFileResult;

constexpr A_long kFlagsOfNewValue = PF_OutFlag_REFRESH_UI | PF_OutFlag_FORCE_RERENDER;

// The folder or file that the user picks, and its end.
class Picked {
public:
    explicit Picked(Record& record) {
        switch (record.below(8)) {
            case 0:
                break;  // cancelled
            case 1:
                path = processHome().cubes() + "/missing.cube";
                break;
            case 2:
                path = processHome().cubes();
                break;
            default:
                writeFile(record);
        }
    }
    ~Picked() {
        if (!written_.empty()) ::unlink(written_.c_str());
    }
    Picked(const Picked&) = delete;
    Picked& operator=(const Picked&) = delete;

    std::string path;

private:
    void writeFile(Record& record) {
        std::string name;
        for (int length = record.below(24); length > 0; --length) {
            const char next = static_cast<char>(record.byte());
            if (next != '/' && next != '\0') name.push_back(next);
        }
        // Bytes that are no UTF-8 may come back as a slash and lead out of the folder.
        const std::string asRead = tw::toUtf8(tw::fromUtf8(name));
        const bool stays = asRead.find('/') == std::string::npos && name != "." && name != "..";
        path = processHome().cubes() + "/" + (stays && !name.empty() ? name : "look.cube");
        written_ = path;
        twtest::writeFile(path, makeCube(record));
    }

    std::string written_;
};

// What the user has been shown.
void requireAlerts(SessionState& session, const std::vector<twtest::ShownAlert>& wanted) {
    if (std::exchange(session.dialogs.alerts, {}) != wanted) violation("the alerts are not right");
}

std::vector<twtest::ShownAlert> alertsFor(LutFileResult result, const std::string& path) {
    if (result == LutFileResult::kUnreadable)
        return {{"Tintwell could not read this LUT:\n" + tw::toUtf8(tw::fromUtf8(path)), true}};
    if (result == LutFileResult::kForeignDomain)
        return {{"Tintwell only takes LUTs with a 0..1 domain.", true}};
    return {};
}

std::string lineFor(LutFileResult result, const std::string& reason, const std::string& path) {
    if (result == LutFileResult::kUnreadable) return "could not read " + path + ": " + reason;
    if (result == LutFileResult::kForeignDomain) return path + " has a domain other than 0..1";
    return "";
}

// Nothing, when the press changes nothing.
std::optional<std::string> textToStore(SessionState& session, const std::string& path) {
    const std::wstring wide = tw::fromUtf8(path);
    if (wide.empty()) {
        session.requireLine("LUT button: cancelled");
        return std::nullopt;
    }
    tw::LutFile file;
    std::string reason;
    const LutFileResult result = tw_effect::loadLutFile(wide, file, reason);
    requireAlerts(session, alertsFor(result, path));
    if (result == LutFileResult::kLoaded) return file.text;
    // Bytes that are no UTF-8 may come back as a zero, where the log ends the name.
    const std::string logged = tw::toUtf8(wide).c_str();
    session.requireLine("LUT button: " + lineFor(result, reason, logged));
    return std::nullopt;
}

}  // namespace

void pressLutButton(SessionState& session, Record& record) {
    Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    const Picked picked(record);
    session.dialogs.pick = [&] { return picked.path; };
    session.dialogs.folders.clear();
    const host_sim::CommandResult result = one->instance->press(kParamLutButton);
    require(session.dialogs.folders == std::vector<std::string>{tw::toUtf8(tw::lutFolder())},
            "the dialog was opened in another folder");
    session.requireLine("USER_CHANGED_PARAM index 3");

    const std::optional<std::string> text = textToStore(session, picked.path);
    PF_Err error = PF_Err_NONE;
    if (text) error = session.reference.store(*text, one->lut);
    const bool stored = text && error == PF_Err_NONE;
    require(result.error == error, "the press's error is wrong");
    require(result.out.out_flags == (stored ? kFlagsOfNewValue : 0), "the press's flags are wrong");
    require(result.changed == (stored ? std::vector<int>{kParamLut} : std::vector<int>()),
            "the press flagged other parameters");
    if (!stored) return;
    // Once by the press itself, once more as the host refreshes what it shows.
    for (int times = 0; times < 2; ++times)
        one->label = session.reference.label(one->lut, one->label);
}

void pressEditButton(SessionState& session, Record& record) {
    Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    const std::string file = processHome().home.dataFile("edit-request.json");
    ::unlink(file.c_str());
    require(one->instance->press(kParamEditButton).error == PF_Err_NONE, "Edit gave an error");
    const std::optional<tw::Lut3D> lut = session.reference.lutOf(one->lut);
    const std::string request = twtest::readFile(file);
    if (lut && lut->id > 0) {
        requireAlerts(session, {});
        require(request.starts_with("{\"id\":" + std::to_string(lut->id) + ",\"name\":\""),
                "the request is of another match");
        require(request.size() < 600, "the request is too long");
        return;
    }
    require(session.dialogs.alerts.size() == 1 && !session.dialogs.alerts[0].warning,
            "the user was not told that there is no match");
    session.dialogs.alerts.clear();
    require(request.empty(), "a request without a match was written");
}

void pressNothing(SessionState& session, Record& record) {
    const Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    const int index = record.below(4) - 1;
    const host_sim::CommandResult result =
        index < 0 ? one->instance->pressWithoutRecord() : one->instance->press(index);
    require(result.error == PF_Err_NONE, "the command gave an error");
    require(result.changed.empty(), "a value has changed");
    session.requireLine("USER_CHANGED_PARAM index " + std::to_string(index));
}

void updateLabel(SessionState& session, Record& record) {
    Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    require(one->instance->updateUi().error == PF_Err_NONE, "the update gave an error");
    one->label = session.reference.label(one->lut, one->label);
}

void nameLutFolder(SessionState&, Record& record) {
    const std::string file = processHome().home.dataFile("lut-folder.txt");
    switch (record.below(3)) {
        case 1:
            twtest::writeFile(file, processHome().home.dataFolder() + record.rest());
            break;
        case 2:
            ::unlink(file.c_str());
            break;
        default:
            twtest::writeFile(file, record.rest());
    }
}

}  // namespace session_fuzz
