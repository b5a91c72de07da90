#include "tests/platform/robot.h"

#import <AppKit/AppKit.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <iterator>

namespace {

// A modal loop looks at its state only after an event: give it one.
void wakeLoop() {
    [NSApp postEvent:[NSEvent otherEventWithType:NSApplicationDefined
                                        location:NSZeroPoint
                                   modifierFlags:0
                                       timestamp:0
                                    windowNumber:0
                                         context:nil
                                         subtype:0
                                           data1:0
                                           data2:0]
             atStart:NO];
}

}  // namespace

@interface TintwellTicker : NSObject {
@public
    std::function<bool(twtest::Dialog&)>* step;
    std::atomic<bool> finished;
    std::atomic<bool> acted;
    int ticks;
}
- (void)tick;
- (void)stopApplication;
@end

@implementation TintwellTicker
- (void)tick {
    NSWindow* window = [NSApp modalWindow];
    if (finished || window == nil || ![window isVisible]) return;
    twtest::Dialog dialog;
    if ((*step)(dialog)) acted = finished = true;
    constexpr int kPatience = 1000;
    if (!finished && ++ticks > kPatience) {
        finished = true;
        [NSApp abortModal];
    }
    wakeLoop();
}
- (void)stopApplication {
    [NSApp stop:nil];
    wakeLoop();
}
@end

namespace twtest {
namespace {

NSString* text(const std::string& utf8) {
    return [NSString stringWithUTF8String:utf8.c_str()];
}

std::string utf8(NSString* string) {
    return string ? [string UTF8String] : "";
}

template <class View>
void collect(NSView* view, Class kind, std::vector<View*>& found) {
    if ([view isKindOfClass:kind]) found.push_back(static_cast<View*>(view));
    for (NSView* child in [view subviews])
        collect(child, kind, found);
}

template <class View>
std::vector<View*> viewsOf(Class kind) {
    std::vector<View*> found;
    collect([[NSApp modalWindow] contentView], kind, found);
    return found;
}

NSOpenPanel* openPanel() {
    return static_cast<NSOpenPanel*>([NSApp modalWindow]);
}

NSButton* buttonTitled(const std::string& title) {
    for (NSButton* button : viewsOf<NSButton>([NSButton class])) {
        if ([[button title] isEqualToString:text(title)]) return button;
    }
    return nil;
}

NSBrowser* browser() {
    const auto browsers = viewsOf<NSBrowser>([NSBrowser class]);
    return browsers.empty() ? nil : browsers.front();
}

NSMatrix* lastColumn() {
    return [browser() matrixInColumn:[browser() lastColumn]];
}

NSInteger rowNamed(const std::string& name, const std::vector<std::string>& rows) {
    const auto row = std::find(rows.begin(), rows.end(), name);
    return row == rows.end() ? -1 : row - rows.begin();
}

ScreenPoint middleOnScreen(NSView* view, NSRect area) {
    const NSPoint inView = NSMakePoint(NSMidX(area), NSMidY(area));
    const NSPoint point = [[view window] convertBaseToScreen:[view convertPoint:inView toView:nil]];
    const CGFloat top = NSMaxY([[NSScreen mainScreen] frame]);
    return {static_cast<int>(point.x), static_cast<int>(top - point.y)};
}

}  // namespace

bool Dialog::isOpenPanel() const {
    return [[NSApp modalWindow] isKindOfClass:[NSOpenPanel class]];
}

std::string Dialog::title() const {
    return utf8([openPanel() title]);
}

std::vector<std::string> Dialog::texts() const {
    std::vector<std::string> found;
    for (NSTextField* field : viewsOf<NSTextField>([NSTextField class])) {
        found.push_back(utf8([field stringValue]));
    }
    return found;
}

std::vector<std::string> Dialog::buttons() const {
    std::vector<std::string> found;
    for (NSButton* button : viewsOf<NSButton>([NSButton class])) {
        if ([button action] && [button target]) found.push_back(utf8([button title]));
    }
    return found;
}

std::vector<std::string> Dialog::rows() const {
    std::vector<std::string> found;
    for (NSCell* cell in [lastColumn() cells])
        found.push_back(utf8([cell stringValue]));
    return found;
}

std::string Dialog::folder() const {
    return utf8([openPanel() directory]);
}

bool Dialog::takesFolders() const {
    return [openPanel() canChooseDirectories];
}

bool Dialog::takesSeveral() const {
    return [openPanel() allowsMultipleSelection];
}

bool Dialog::selectRow(const std::string& name) const {
    const NSInteger row = rowNamed(name, rows());
    if (row < 0) return false;
    [browser() selectRow:row inColumn:[browser() lastColumn]];
    [browser() sendAction];
    return true;
}

bool Dialog::click(const std::string& button) const {
    NSButton* found = buttonTitled(button);
    [found performClick:nil];
    return found != nil;
}

ScreenPoint Dialog::rowOnScreen(const std::string& name) const {
    NSMatrix* column = lastColumn();
    return middleOnScreen(column, [column cellFrameAtRow:rowNamed(name, rows()) column:0]);
}

ScreenPoint Dialog::buttonOnScreen(const std::string& title) const {
    NSButton* button = buttonTitled(title);
    return middleOnScreen(button, [button bounds]);
}

struct Robot::State {
    explicit State(std::function<bool(Dialog&)> wanted)
        : step(std::move(wanted)), ticker([[TintwellTicker alloc] init]) {
        ticker->step = &step;
    }
    ~State() { [ticker release]; }

    std::function<bool(Dialog&)> step;
    TintwellTicker* ticker;
};

// Ticks come as an input source from another thread: that makes the blocked loop look at its
// events, which a timer would not.
Robot::Robot(std::function<bool(Dialog&)> step) : state_(std::make_unique<State>(std::move(step))) {
    ticker_ = std::thread([ticker = state_->ticker] {
        while (!ticker->finished) {
            @autoreleasepool {
                [ticker performSelectorOnMainThread:@selector(tick)
                                         withObject:nil
                                      waitUntilDone:NO
                                              modes:@[ NSModalPanelRunLoopMode ]];
            }
            usleep(20000);
        }
    });
}

Robot::~Robot() {
    state_->ticker->finished = true;
    ticker_.join();
}

bool Robot::acted() const {
    return state_->ticker->acted;
}

void whileApplicationRuns(std::function<void()> work) {
    TintwellTicker* stopper = [[TintwellTicker alloc] init];
    std::thread worker([&] {
        work();
        @autoreleasepool {
            [stopper performSelectorOnMainThread:@selector(stopApplication)
                                      withObject:nil
                                   waitUntilDone:NO];
        }
    });
    [NSApp run];
    worker.join();
    [stopper release];
}

bool onMainThread() {
    return [NSThread isMainThread];
}

}  // namespace twtest
