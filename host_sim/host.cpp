#include "host_sim/host.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "host_sim/values/call_scope.h"
#include "host_sim/values/error.h"

// The hosts leave this type incomplete to effects.
struct PF_PluginData {
    std::vector<host_sim::Registration>* registrations;
};

namespace host_sim {
namespace {

std::string text(const A_u_char* bytes) {
    if (bytes != nullptr) return reinterpret_cast<const char*>(bytes);
    Session::current().books.problem("The registration callback was given a null text");
    return "";
}

A_Err recordRegistration(PF_PluginDataPtr data, const A_u_char* name, const A_u_char* matchName,
                         const A_u_char* category, const A_u_char* entryPoint, A_long kind,
                         A_long apiMajor, A_long apiMinor, A_long reservedInfo,
                         const A_u_char* supportUrl) {
    data->registrations->push_back({data, text(name), text(matchName), text(category),
                                    text(entryPoint), kind, apiMajor, apiMinor, reservedInfo,
                                    text(supportUrl)});
    return Session::called().refusals.answer(Refusal::kRegistration);
}

}  // namespace

Host::Host(const std::filesystem::path& module, const Personality& personality)
    : session_(personality), module_(module) {}

Host::~Host() {
    end();
    if (!session_.books.hasUnseenProblems() || std::uncaught_exceptions() > 0) return;
    for (const std::string& problem : session_.books.problems()) {
        std::fprintf(stderr, "%s\n", problem.c_str());
    }
    std::fputs("A simulated host ended with problems that were not read.\n", stderr);
    std::abort();
}

void Host::start() {
    if (registerEffect() != A_Err_NONE) throw SimError("The effect's registration failed.");
    need(globalSetup(), "PF_Cmd_GLOBAL_SETUP");
    need(paramsSetup(), "PF_Cmd_PARAMS_SETUP");
}

A_Err Host::registerEffect() {
    const auto entry = module_.registration();
    const CallScope scope(-1, "the registration");
    PF_PluginData data{&registrations_};
    SPBasicSuite* basic = session_.refusals.hidesBasicSuite() ? nullptr : &session_.basic;
    const A_Err error = entry(&data, recordRegistration, basic, session_.personality.name.c_str(),
                              session_.personality.version.c_str());
    if (error != A_Err_NONE) return error;
    if (registrations_.size() != 1) {
        session_.books.problem("The module registered " + std::to_string(registrations_.size()) +
                               " effects instead of one");
    }
    if (!registrations_.empty()) {
        session_.entry = module_.command(registrations_.front().entryPoint.c_str());
    }
    return error;
}

CommandResult Host::globalSetup() {
    CommandResult result = command(PF_Cmd_GLOBAL_SETUP);
    setUp_ = result.out;
    globallySetUp_ = true;
    return result;
}

CommandResult Host::paramsSetup() {
    CommandResult result = command(PF_Cmd_PARAMS_SETUP);
    session_.params.finish(result.error, result.out.num_params);
    return result;
}

CommandResult Host::command(PF_Cmd command, void* extra) {
    if (session_.entry == nullptr) throw SimError("The effect is not registered.");
    Request request;
    request.command = command;
    request.effectRef = session_.effectRef(0);
    request.extra = extra;
    return send(session_, request);
}

Instance& Host::apply() {
    return add(nullptr, PF_Cmd_SEQUENCE_SETUP);
}

Instance& Host::duplicate(const Instance& other) {
    return add(&other, PF_Cmd_SEQUENCE_SETUP);
}

Instance& Host::add(const Instance* source, PF_Cmd sequenceCommand) {
    if (session_.entry == nullptr) throw SimError("The effect is not registered.");
    instances_.push_back(std::make_unique<Instance>(session_, nextInstance_++));
    Instance& instance = *instances_.back();
    try {
        instance.copyFrom(source);
        need(instance.command(sequenceCommand), "the command for a new sequence");
    } catch (...) {
        instance.disposeValues();
        instances_.pop_back();
        throw;
    }
    return instance;
}

void Host::remove(Instance& instance) {
    instance.command(PF_Cmd_SEQUENCE_SETDOWN);
    instance.disposeValues();
    std::erase_if(instances_, [&](const auto& held) { return held.get() == &instance; });
}

void Host::save(const Instance& instance, const std::filesystem::path& file) const {
    writeProject(file, instance.save(matchName()));
}

Instance& Host::load(const std::filesystem::path& file) {
    const SavedEffect saved = readProject(file);
    if (saved.matchName != matchName()) {
        throw ProjectError("The project file " + file.string() + " belongs to the effect \"" +
                           saved.matchName + "\".");
    }
    Instance& instance = add(nullptr, PF_Cmd_SEQUENCE_RESETUP);
    try {
        instance.restore(saved);
    } catch (...) {
        remove(instance);
        throw;
    }
    return instance;
}

std::string Host::matchName() const {
    if (registrations_.empty()) throw SimError("The effect is not registered.");
    return registrations_.front().matchName;
}

std::vector<std::string> Host::close() {
    end();
    return problems();
}

void Host::end() {
    if (closed_) return;
    closed_ = true;
    while (!instances_.empty())
        remove(*instances_.back());
    for (const int index : session_.params.arbitraryIndices()) {
        const PF_ArbitraryDef& declared = session_.params.at(index).definition.u.arb_d;
        if (declared.dephault != nullptr) arbitraryCalls(index).dispose(declared.dephault);
    }
    if (globallySetUp_) command(PF_Cmd_GLOBAL_SETDOWN);
    session_.handles.reportLeftovers();
    session_.suites.reportLeftovers();
}

PrPixelFormat Host::format(int bits) const {
    const std::vector<PrPixelFormat> declared = session_.formats.declared();
    const auto has = [&](PrPixelFormat format) {
        return std::find(declared.begin(), declared.end(), format) != declared.end();
    };
    if (bits == 32 && has(PrPixelFormat_BGRA_4444_32f)) return PrPixelFormat_BGRA_4444_32f;
    return has(PrPixelFormat_BGRA_4444_8u) ? PrPixelFormat_BGRA_4444_8u
                                           : PrPixelFormat_ARGB_4444_8u;
}

ArbitraryCalls Host::arbitraryCalls(int index) {
    const PF_ParamDef& declared = session_.params.at(index).definition;
    if (declared.param_type != PF_Param_ARBITRARY_DATA) {
        throw SimError("Parameter " + std::to_string(index) + " holds no arbitrary data.");
    }
    return {session_, declared.u.arb_d, 0};
}

void Host::need(const CommandResult& result, const char* command) const {
    if (result.error == PF_Err_NONE) return;
    throw SimError("The effect answered " + std::string(command) + " with the error " +
                   std::to_string(result.error) + ".");
}

}  // namespace host_sim
