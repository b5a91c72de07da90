// The simulated host: one application process with one effect module, from loading to the end.
//
//   host_sim::Host host(modulePath, host_sim::premierePro());
//   host.start();                                  // register, GLOBAL_SETUP, PARAMS_SETUP
//   host_sim::Instance& effect = host.apply();     // SEQUENCE_SETUP, values from the defaults
//   effect.setSlider(1, 50.0);
//   host_sim::Frame in(host.format(8), 64, 36), out(host.format(8), 64, 36);
//   effect.render(in, out);
//   EXPECT_EQ(host.close(), std::vector<std::string>());
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host_sim/instance.h"
#include "host_sim/module.h"
#include "host_sim/session.h"

namespace host_sim {

// What the registration callback was given, in its order.
struct Registration {
    PF_PluginDataPtr data = nullptr;
    std::string name;
    std::string matchName;
    std::string category;
    std::string entryPoint;
    A_long kind = 0;
    A_long apiMajor = 0;
    A_long apiMinor = 0;
    A_long reservedInfo = 0;
    std::string supportUrl;
};

// At most one host is open in a process. Its own functions are for one thread, its instances'
// functions for any.
class Host {
public:
    // Loads the module; nothing is called yet, so that refusals can be set. Throws SimError.
    Host(const std::filesystem::path& module, const Personality& personality);
    // Closes. A problem that nobody has asked for is printed and ends the process, so that no test
    // can pass over it.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The three below in turn. Throws SimError when one of them fails.
    void start();
    // Each by itself, for tests of failures. globalSetup and paramsSetup need the registration.
    A_Err registerEffect();
    CommandResult globalSetup();
    CommandResult paramsSetup();
    // Any other command without instance, params and output.
    CommandResult command(PF_Cmd command, void* extra = nullptr);

    // A new instance with copies of the default values, after SEQUENCE_SETUP. Throws SimError when
    // the command or a copy fails. The reference is good until remove() or close().
    Instance& apply();
    // The same with copies of another instance's values.
    Instance& duplicate(const Instance& other);
    // Disposes of the values through the effect, after SEQUENCE_SETDOWN.
    void remove(Instance& instance);

    // Throws ProjectError, and SimError when the effect fails a command. load() applies a new
    // instance, sends SEQUENCE_RESETUP and passes over ids that the effect does not declare;
    // parameters that the file does not hold get their defaults.
    void save(const Instance& instance, const std::filesystem::path& file) const;
    Instance& load(const std::filesystem::path& file);

    // Removes all instances, disposes of the defaults, sends GLOBAL_SETDOWN (each as far as the
    // effect got), looks for leftovers and returns all problems. Again: only returns them.
    std::vector<std::string> close();
    std::vector<std::string> problems() { return session_.books.problems(); }

    // The format of worlds of `bits` bits a channel (8 or 32): what the effect declared in Premiere
    // Pro, else 8-bit ARGB. Without a declared float format 32 gives an 8-bit one.
    PrPixelFormat format(int bits) const;

    // Empty until registerEffect().
    const std::vector<Registration>& registrations() const { return registrations_; }
    // What GLOBAL_SETUP answered; all zero before.
    const PF_OutData& setUp() const { return setUp_; }
    // Of the effect, once it is registered.
    std::string matchName() const;
    const DeclaredParams& params() const { return session_.params; }
    Refusals& refusals() { return session_.refusals; }
    Books& books() { return session_.books; }
    HandleMemory& handles() { return session_.handles; }
    const SuiteLedger& suites() const { return session_.suites; }
    const PixelFormatBook& pixelFormats() const { return session_.formats; }
    const Module& module() const { return module_; }
    // Calls `watcher` whenever the effect calls the host, on the thread that does. For the time
    // before commands are sent from several threads.
    void watchCallbacks(std::function<void()> watcher) { session_.onCallback = std::move(watcher); }
    // What out_data holds when a command begins: all zero unless a test presets something.
    PF_OutData& outPreset() { return session_.outPreset; }
    ArbitraryCalls arbitraryCalls(int index);

private:
    Instance& add(const Instance* source, PF_Cmd sequenceCommand);
    void end();
    void need(const CommandResult& result, const char* command) const;

    Session session_;
    Module module_;
    std::vector<Registration> registrations_;
    std::vector<std::unique_ptr<Instance>> instances_;
    int nextInstance_ = 1;
    PF_OutData setUp_ = {};
    bool globallySetUp_ = false;
    bool closed_ = false;
};

}  // namespace host_sim
