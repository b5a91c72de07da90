// The LUT button, the Edit LUT button and the label while calls fail.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "native/src/lut_engine.h"
#include "tests/faults/effect_scenario.h"
#include "tests/support/cube_texts.h"
#include "tests/support/request_line.h"

namespace faults {
namespace {

using twtest::emptyLut;
using twtest::kRefresh;
using twtest::quarterText;
using twtest::rotationText;
using twtest::widened;
using twtest::writeFile;

// Empties it and frees its memory.
template <class List>
void drop(List& list) {
    List().swap(list);
}

// The user presses the LUT button and picks a file of this contents; without any, cancels. The
// button has shown that there is no LUT.
class Pressing : public EffectScenario {
public:
    explicit Pressing(const std::string& contents, bool hasValue = true)
        : EffectScenario(emptyLut()) {
        effect().updateUi();
        if (!hasValue) effect().setNull(kLut);
        std::filesystem::create_directory(home_ / "LUTs");
        writeFile(home_.dataFile("lut-folder.txt"), home_ / "LUTs");
        writeFile(home_ / "Film.cube", contents);
        dialogs().pick = [file = contents.empty() ? "" : home_ / "Film.cube"] { return file; };
        tw::Lut3D lut;
        if (tw::parseCube(contents, lut, nullptr))
            stored_ = widened(tw::toEmbeddedText(lut, 42, "Film"));
    }

    void run() override { result_ = effect().press(kLutButton); }

    std::string outcome() override {
        const std::string words = answered(result_.error, "no error") + ", " + valueThen() + ", " +
                                  effect().label(kLutButton) + dialogsThen();
        drop(dialogs().folders);
        drop(dialogs().alerts);
        return words;
    }

private:
    std::string valueThen() {
        const bool isFlagged = result_.changed == std::vector<int>{kLut};
        EXPECT_EQ(result_.out.out_flags, isFlagged ? kRefresh : 0);
        if (value() == nullptr) return "null";
        const Bytes now = bytes();
        if (isFlagged && now == stored_) return "new";
        if (isFlagged && now.size() == stored_.size()) return "unfilled";
        return !isFlagged && now == emptyLut() ? "old" : "other bytes";
    }

    std::string dialogsThen() const {
        if (dialogs().folders.empty()) return ", no dialog";
        const bool isElsewhere = dialogs().folders.front() != home_ / "LUTs";
        return std::string(isElsewhere ? ", dialog elsewhere" : "") +
               (dialogs().alerts.empty() ? "" : ", alert");
    }

    host_sim::CommandResult result_;
    Bytes stored_;
};

// More than is read at once.
std::string film() {
    return "# Tintwell match 42\n" + twtest::cubeOfBytes(2, 70000);
}

// A file that cannot be opened or read does not parse. Without lut-folder.txt the dialog opens in
// the default folder. Without memory the press fails, or the update that follows it: the value is
// the old or the new one.
Expected loaded(const std::string& before) {
    const std::string good = "no error, new, Film.cube";
    const std::string elsewhere = good + ", dialog elsewhere";
    const std::string unread = "no error, " + before + ", Choose a LUT, alert";
    const std::string failed = "error 512, " + before + ", Choose a LUT";
    return Expected(good)
        .failed(kNew, {failed + ", no dialog", failed, "error 512, new, Film.cube", good})
        .failed(kOpen, {good, elsewhere, unread})
        .failed(kRead, {good, elsewhere, unread})
        .failed(kLock, {"no error, unfilled, Choose a LUT", good, "no error, new, Choose a LUT"})
        .harmless({kWrite, kClose, kSuite, kNoTable, kUpdate});
}

TEST(LutButtonFaults, ofAGoodFile) {
    expectEffect(scenario<Pressing>(film(), true),
                 loaded("old").failed(kResize, {"error 4, old, Choose a LUT"}));
}

TEST(LutButtonFaults, ofAGoodFileWithoutAValueBefore) {
    expectEffect(scenario<Pressing>(film(), false),
                 loaded("null").failed(kHandle, {"error 4, null, Choose a LUT"}));
}

// A file that is refused with an alert.
Expected refused() {
    const Outcomes anyFolder = {"no error, old, Choose a LUT, alert",
                                "no error, old, Choose a LUT, dialog elsewhere, alert"};
    return Expected("no error, old, Choose a LUT, alert")
        .failed(kNew, {"error 512, old, Choose a LUT, no dialog", "error 512, old, Choose a LUT"})
        .failed(kOpen, anyFolder)
        .failed(kRead, anyFolder)
        .harmless({kWrite, kClose});
}

TEST(LutButtonFaults, ofAFileThatDoesNotParse) {
    expectEffect(scenario<Pressing>("LUT_1D_SIZE 2\n", true), refused());
}

TEST(LutButtonFaults, ofAFileOfAForeignDomain) {
    expectEffect(scenario<Pressing>(twtest::cube(2, "DOMAIN_MAX 1 1 1.0001\n"), true), refused());
}

TEST(LutButtonFaults, ofACancelledDialog) {
    const std::string good = "no error, old, Choose a LUT";
    const Outcomes anyFolder = {good, good + ", dialog elsewhere"};
    expectEffect(scenario<Pressing>("", true),
                 Expected(good)
                     .failed(kNew, {"error 512, old, Choose a LUT, no dialog",
                                    "error 512, old, Choose a LUT"})
                     .failed(kOpen, anyFolder)
                     .failed(kRead, {good + ", dialog elsewhere"})
                     .harmless({kWrite, kClose}));
}

// The user presses the Edit LUT button. There is an older request.
class Editing : public EffectScenario {
public:
    explicit Editing(const std::string& text)
        : EffectScenario(widened(text)), held_(widened(text)) {
        writeFile(request(), kOlder);
    }

    void run() override { result_ = effect().press(kEditButton); }

    std::string outcome() override {
        EXPECT_EQ(result_.changed, std::vector<int>());
        EXPECT_EQ(result_.out.out_flags, 0);
        EXPECT_EQ(bytes(), held_);
        const std::string alert = dialogs().alerts.empty() ? "" : ", alert";
        drop(dialogs().alerts);
        return answered(result_.error, "no error") + ", " + requestThen() + alert;
    }

private:
    static constexpr char kOlder[] = "older";

    std::string request() const { return home_.dataFile("edit-request.json"); }

    std::string requestThen() const {
        const std::string line = twtest::readFile(request());
        if (line.empty()) return "empty request";
        if (line == kOlder) return "older request";
        return twtest::isRequest(line, 7, "Turn") ? "request" : line;
    }

    host_sim::CommandResult result_;
    Bytes held_;
};

TEST(EditButtonFaults, ofALutWithAMatch) {
    expectEffect(scenario<Editing>(rotationText()),
                 Expected("no error, request")
                     .failed(kNew, {"error 512, older request", "error 512, request"})
                     .failed(kLock, {"no error, older request, alert"})
                     .failed(kOpen, {"no error, request", "no error, older request"})
                     .failed(kWrite, {"no error, request", "no error, empty request"})
                     .failed(kClose, {"no error, request", "no error, empty request"}));
}

TEST(EditButtonFaults, ofALutWithoutAMatch) {
    expectEffect(scenario<Editing>(quarterText()), Expected("no error, older request, alert")
                                                       .failed(kNew, {"error 512, older request"})
                                                       .harmless({kLock, kOpen, kWrite, kClose}));
}

// The host asks for the label.
class Labelling : public EffectScenario {
public:
    explicit Labelling(const std::string& text) : EffectScenario(widened(text)) {}

    void run() override { error_ = effect().updateUi().error; }
    std::string outcome() override {
        const std::string log = twtest::readFile(logFile());
        const bool isLogged = log.find("LUT button: label") != std::string::npos;
        return answered(error_, "no error") + ", " + effect().label(kLutButton) +
               (isLogged ? "" : ", not logged");
    }

private:
    PF_Err error_ = 0;
};

// The label stays when the host cannot be given another one. A line for which there was no memory
// is logged the next time; one that could not be written is not.
Expected labelled(const std::string& label) {
    const std::string good = "no error, " + label;
    const Outcomes lost = {good + ", not logged"};
    return Expected(good)
        .failed(kNew, {"error 512, Change LUT, not logged", "error 512, " + label + ", not logged"})
        .failed(kLock, {"no error, Choose a LUT"})
        .failed(kSuite, {"no error, Change LUT, not logged"})
        .failed(kNoTable, {"no error, Change LUT, not logged"})
        .failed(kUpdate, {"no error, Change LUT"})
        .failed(kWrite, lost)
        .failed(kClose, lost)
        .repeated(kWrite, lost)
        .repeated(kClose, lost)
        .harmless({kOpen});
}

TEST(LabelFaults, ofANamedLut) {
    // "Choose a LUT", once it was shown, is kept.
    expectEffect(scenario<Labelling>(rotationText()), labelled("Turn.cube").keepsOther({kLock}));
}

TEST(LabelFaults, ofALutWithoutAName) {
    expectEffect(scenario<Labelling>(quarterText()),
                 labelled("From Tintwell (Apply again to name it)").keepsOther({kLock}));
}

TEST(LabelFaults, ofThePattern) {
    expectEffect(scenario<Labelling>("TWLUTP 8"), labelled("Calibrating").keepsOther({kLock}));
}

TEST(LabelFaults, ofNoLut) {
    expectEffect(scenario<Labelling>("TWLUT0"), labelled("Choose a LUT"));
}

}  // namespace
}  // namespace faults
