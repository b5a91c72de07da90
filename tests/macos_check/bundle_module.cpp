// A Linux module that is the bundle's x86-64 code: a host that loads it runs what macOS users of
// Intel machines run. The environment variable TINTWELL_BUNDLE names the bundle. The test
// answers the dialogs, as in the module TintwellStandIn.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "effect/entry_points.h"
#include "gpu/entry_point.h"
#include "macos_check/loader/image.h"
#include "macos_check/loader/system.h"
#include "native/src/never_destroyed.h"
#include "tests/macos_check/bundle_messages.h"
#include "tests/support/stand_in_dialogs.h"

namespace {

[[noreturn]] void giveUp(const std::string& reason) {
    std::fprintf(stderr, "%s\n", reason.c_str());
    std::_Exit(EXIT_FAILURE);
}

const macho::Image& bundle() {
    const char* path = std::getenv("TINTWELL_BUNDLE");
    if (path == nullptr) giveUp("TINTWELL_BUNDLE does not say which bundle to load.");
    const auto file = std::filesystem::path(path) / "Contents/MacOS/Tintwell";
    try {
        static tw::NeverDestroyed<const macho::Image> image(file, macho::resolveImport,
                                                            macho::registerFrame);
        return *image;
    } catch (const std::exception& error) {
        giveUp(file.string() + " " + error.what() + ".");
    }
}

template <class Function>
Function* exported(const char* name) {
    void* found = bundle().symbol(name);
    if (found == nullptr) giveUp(std::string("The bundle does not export ") + name + ".");
    return reinterpret_cast<Function*>(found);
}

}  // namespace

A_Err PluginDataEntryFunction2(PF_PluginDataPtr registration, PF_PluginDataCB2 callback,
                               SPBasicSuite* basic, const char* hostName, const char* hostVersion) {
    static const auto entry =
        exported<decltype(PluginDataEntryFunction2)>("_PluginDataEntryFunction2");
    return entry(registration, callback, basic, hostName, hostVersion);
}

PF_Err EffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                  PF_LayerDef* output, void* extra) {
    static const auto entry = exported<decltype(EffectMain)>("_EffectMain");
    return entry(cmd, in_data, out_data, params, output, extra);
}

prSuiteError xGPUFilterEntry(csSDK_uint32 inHostInterfaceVersion, csSDK_int32* ioIndex,
                             prBool inStartup, piSuitesPtr piSuites, PrGPUFilter* outFilter,
                             PrGPUFilterInfo* outFilterInfo) {
    static const auto entry = exported<decltype(xGPUFilterEntry)>("_xGPUFilterEntry");
    return entry(inHostInterfaceVersion, ioIndex, inStartup, piSuites, outFilter, outFilterInfo);
}

extern "C" TW_EXPORT macho::AppKit* tintwell_bundle_appkit() {
    return &macho::appKit();
}

extern "C" TW_EXPORT twtest::StandInDialogs* tintwell_stand_in_dialogs() {
    static tw::NeverDestroyed<twtest::StandInDialogs> held;
    static twtest::StandInDialogs& dialogs = *held;
    macho::appKit().pick = [](const std::string& folder) {
        dialogs.folders.push_back(folder);
        return dialogs.pick ? dialogs.pick() : std::string();
    };
    macho::appKit().alert = [](const std::string& message, bool warning) {
        dialogs.alerts.push_back({message, warning});
    };
    return &dialogs;
}
