#include "macos_check/loader/appkit.h"

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <map>
#include <mutex>

#include "native/src/never_destroyed.h"

namespace macho {
namespace {

// Laid out as the compiler lays out constant strings; classes, URLs, panels and the rest use the
// same record. `text` is a class's name, a string's characters or a URL's path.
struct Object {
    const Object* isa;
    std::uint64_t flags;
    const char* text;
    std::uint64_t length;
};

// The beginning of a block.
struct Block {
    void* isa;
    std::int32_t flags;
    std::int32_t reserved;
    void (*invoke)(Block*);
};

using Argument = std::uintptr_t;

// The main thread, which does one thing at a time: held by who acts for it.
std::recursive_mutex& mainThread() {
    static tw::NeverDestroyed<std::recursive_mutex> one;
    return *one;
}

// What is known of the dialog being put together; dialogs come one at a time.
struct Dialog {
    std::string folder;
    std::string message;
    bool warning = false;
    std::string chosen;
};

Dialog& dialog() {
    static tw::NeverDestroyed<Dialog> current;
    return *current;
}

// Objects and texts are kept to the end of the process: the code under test owns none of them by
// address, and is called until then.
const char* keep(std::string text) {
    static tw::NeverDestroyed<std::deque<std::string>> kept;
    return kept->emplace_back(std::move(text)).c_str();
}

Object* classNamed(std::string_view name) {
    static tw::NeverDestroyed<std::map<std::string, Object, std::less<>>> classes;
    const auto found = classes->find(name);
    if (found != classes->end()) return &found->second;
    const auto made = classes->emplace(name, Object{}).first;
    made->second.text = made->first.c_str();
    return &made->second;
}

Object* make(const Object* isa, std::string text = "") {
    static tw::NeverDestroyed<std::deque<Object>> kept;
    const std::uint64_t length = text.size();
    return &kept->emplace_back(Object{isa, 0, keep(std::move(text)), length});
}

Object* object(Argument argument) {
    return reinterpret_cast<Object*>(argument);
}

bool isText(const Object* object) {
    return object != nullptr && object->isa == classNamed("NSString");
}

std::string text(Argument argument) {
    return argument == 0 ? "" : object(argument)->text;
}

// A selector's first argument, as its name says what it takes.
std::string shown(std::string_view selector, Argument argument) {
    if (selector.find(':') == std::string_view::npos) return "";
    const std::string_view numbers[] = {"setAlertStyle:", "setCan", "setAllowsMultiple"};
    for (const std::string_view number : numbers)
        if (selector.starts_with(number)) return std::to_string(argument & 0xFF);
    if (selector == "stringWithUTF8String:")
        return '"' + std::string(reinterpret_cast<const char*>(argument)) + '"';
    if (selector == "arrayWithObjects:count:") return "...";
    if (argument == 0) return "nil";
    if (isText(object(argument))) return '"' + text(argument) + '"';
    return object(argument)->isa->text;
}

void record(const Object* self, const std::string& selector, Argument first) {
    const Object* described = self->isa == nullptr ? self : self->isa;
    appKit().messages.push_back(std::string("[") + described->text + ' ' + selector +
                                shown(selector, first) + ']');
}

Argument openPanel(Object* self) {
    dialog() = {};
    return reinterpret_cast<Argument>(make(self));
}

Argument runModal(const Object* self) {
    const std::string_view kind = self->isa->text;
    if (kind == "NSAlert") {
        if (appKit().alert) appKit().alert(dialog().message, dialog().warning);
        return 1000;
    }
    dialog().chosen = appKit().pick ? appKit().pick(dialog().folder) : "";
    return dialog().chosen.empty() ? 0 : 1;
}

[[noreturn]] void unknownMessage(const std::string& selector) {
    std::fprintf(stderr, "The bundle sent a message that is not known here: %s\n",
                 selector.c_str());
    std::abort();
}

using Handler = Argument (*)(Object* self, Argument first);
using Handlers = std::map<std::string_view, Handler>;

template <class Made>
Argument result(Made* made) {
    return reinterpret_cast<Argument>(made);
}

// Setters whose value only matters to the record.
Argument ignore(Object*, Argument) {
    return 0;
}

const Handlers& handlers() {
    static tw::NeverDestroyed<const Handlers> known(Handlers{
        {"isMainThread", [](Object*, Argument) { return Argument{gettid() == getpid()}; }},
        {"stringWithUTF8String:",
         [](Object* self, Argument first) {
             return result(make(self, reinterpret_cast<const char*>(first)));
         }},
        {"typeWithFilenameExtension:",
         [](Object* self, Argument first) { return result(make(self, text(first))); }},
        {"arrayWithObjects:count:", [](Object* self, Argument) { return result(make(self)); }},
        {"fileURLWithPath:isDirectory:",
         [](Object* self, Argument first) { return result(make(self, text(first))); }},
        {"fileSystemRepresentation",
         [](Object* self, Argument) {
             return appKit().chosenHasPath ? result(self->text) : Argument{0};
         }},
        {"openPanel", [](Object* self, Argument) { return openPanel(self); }},
        {"setTitle:", ignore},
        {"setMessage:", ignore},
        {"setCanChooseFiles:", ignore},
        {"setCanChooseDirectories:", ignore},
        {"setAllowsMultipleSelection:", ignore},
        {"setAllowedContentTypes:", ignore},
        {"setMessageText:", ignore},
        {"addButtonWithTitle:", ignore},
        {"setDirectoryURL:",
         [](Object*, Argument first) {
             dialog().folder = text(first);
             return Argument{0};
         }},
        {"setInformativeText:",
         [](Object*, Argument first) {
             dialog().message = text(first);
             return Argument{0};
         }},
        {"setAlertStyle:",
         [](Object*, Argument first) {
             dialog().warning = first == 0;
             return Argument{0};
         }},
        {"runModal", [](Object* self, Argument) { return runModal(self); }},
        {"URL",
         [](Object*, Argument) { return result(make(classNamed("NSURL"), dialog().chosen)); }},
        {"release",
         [](Object*, Argument) {
             --appKit().liveObjects;
             return Argument{0};
         }},
    });
    return *known;
}

// Until the runtime has registered them, selectors are their names.
Argument sendMessage(Object* self, const char* selector, Argument first) {
    if (self == nullptr) return 0;
    const std::lock_guard lock(mainThread());
    record(self, selector, first);
    const auto handler = handlers().find(selector);
    if (handler == handlers().end()) unknownMessage(selector);
    return handler->second(self, first);
}

Object* allocate(Object* isa) {
    const std::lock_guard lock(mainThread());
    ++appKit().liveObjects;
    dialog() = {};
    return make(isa);
}

void release(Object* self) {
    if (self != nullptr) sendMessage(self, "release", 0);
}

void* pushPool() {
    const std::lock_guard lock(mainThread());
    ++appKit().openPools;
    return nullptr;
}

void popPool(void*) {
    const std::lock_guard lock(mainThread());
    --appKit().openPools;
}

void dispatchAndWait(void*, Block* block) {
    const std::lock_guard lock(mainThread());
    appKit().messages.emplace_back("dispatch_sync");
    block->invoke(block);
}

// Blocks that stay on the stack own nothing; nothing here copies one.
void leaveBlock(const void*, int) {}

[[noreturn]] void copyBlock() {
    std::fputs("The bundle copied a block.\n", stderr);
    std::abort();
}

char mainQueue[64];
char stackBlock[256];

template <class Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

AppKit& appKit() {
    static tw::NeverDestroyed<AppKit> only;
    return *only;
}

void* resolveAppKit(std::string_view linkerName) {
    constexpr std::string_view classPrefix = "_OBJC_CLASS_$_";
    if (linkerName.starts_with(classPrefix))
        return classNamed(linkerName.substr(classPrefix.size()));
    static const std::map<std::string_view, void*> known = {
        {"___CFConstantStringClassReference", classNamed("NSString")},
        {"__Block_object_assign", address(copyBlock)},
        {"__Block_object_dispose", address(leaveBlock)},
        {"__NSConcreteStackBlock", stackBlock},
        {"__dispatch_main_q", mainQueue},
        {"_dispatch_sync", address(dispatchAndWait)},
        {"_objc_alloc", address(allocate)},
        {"_objc_alloc_init", address(allocate)},
        {"_objc_autoreleasePoolPop", address(popPool)},
        {"_objc_autoreleasePoolPush", address(pushPool)},
        {"_objc_msgSend", address(sendMessage)},
        {"_objc_release", address(release)},
    };
    const auto found = known.find(linkerName);
    return found == known.end() ? nullptr : found->second;
}

}  // namespace macho
