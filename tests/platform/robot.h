// A scripted user: finds the open dialog and uses it. Neutral C++, for tests in C++.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace twtest {

struct ScreenPoint {
    int x, y;  // pixels from the screen's top left
};

// The modal dialog that is visible now. Main thread only.
class Dialog {
public:
    bool isOpenPanel() const;
    std::string title() const;
    std::vector<std::string> texts() const;    // the text fields' contents
    std::vector<std::string> buttons() const;  // titles of the buttons that do something
    std::vector<std::string> rows() const;     // what the open panel lists in its last column
    std::string folder() const;                // the open panel's
    bool takesFolders() const;
    bool takesSeveral() const;

    // As a click would, but without the mouse. False when there is no such row or button.
    bool selectRow(const std::string& name) const;
    bool click(const std::string& button) const;

    // Where the middle of it is, for a click with the real mouse. It must exist.
    ScreenPoint rowOnScreen(const std::string& name) const;
    ScreenPoint buttonOnScreen(const std::string& title) const;
};

// While it lives, calls `step` on the main thread every 20 ms in which a modal dialog is visible,
// until that returns true. Gives up and ends the dialog after 20 seconds of it.
class Robot {
public:
    explicit Robot(std::function<bool(Dialog&)> step);
    ~Robot();
    Robot(const Robot&) = delete;
    Robot& operator=(const Robot&) = delete;

    // Whether `step` has returned true.
    bool acted() const;

private:
    struct State;
    std::unique_ptr<State> state_;
    std::thread ticker_;
};

// Runs `work` on another thread while the main thread, the caller's, runs the application's event
// loop as a host's does; returns when `work` has.
void whileApplicationRuns(std::function<void()> work);

bool onMainThread();

}  // namespace twtest
