#include "host_sim/command.h"

#include <cstring>

#include "host_sim/callbacks.h"
#include "host_sim/session.h"
#include "host_sim/values/call_scope.h"
#include "host_sim/values/guarded.h"

namespace host_sim {
namespace {

constexpr PF_Err kExceptionEscaped = -1;

PF_InData inData(Session& session, const Request& request) {
    PF_InData in = {};
    in.inter = interactionCallbacks();
    in.utils = &session.utilities;
    in.effect_ref = request.effectRef;
    in.version = session.personality.apiVersion;
    in.appl_id = session.personality.applId;
    in.num_params = request.params == nullptr ? 0 : request.params->count();
    in.pica_basicP = session.refusals.hidesBasicSuite() ? nullptr : &session.basic;
    in.quality = request.settings.quality;
    in.current_time = request.settings.time;
    in.time_step = request.settings.timeStep;
    in.local_time_step = request.settings.timeStep;
    in.total_time = request.settings.totalTime;
    in.time_scale = request.settings.timeScale;
    in.field = request.settings.field;
    in.width = request.width;
    in.height = request.height;
    in.downsample_x = in.downsample_y = in.pixel_aspect_ratio = {1, 1};
    return in;
}

PF_Err callEffect(Session& session, const Request& request, PF_InData* in, PF_OutData* out) {
    try {
        return session.entry(request.command, in, out,
                             request.params == nullptr ? nullptr : request.params->list(),
                             request.output, request.extra);
    } catch (...) {
        session.books.problem("An exception left the effect");
        return kExceptionEscaped;
    }
}

void checkRecords(Books& books, const Guarded<PF_InData>& in, Guarded<PF_OutData>& out) {
    if (!in.isIntact() || !in.isUnchanged()) books.problem("in_data was written");
    if (!out.isIntact()) books.problem("Bytes beside out_data were overwritten");
    if (std::memchr(out->return_msg, 0, sizeof(out->return_msg)) == nullptr) {
        books.problem("return_msg has no end");
    }
}

std::string selectorName(PF_FunctionSelector selector) {
    static constexpr const char* kNames[] = {"NEW",        "DISPOSE",   "COPY",   "FLAT_SIZE",
                                             "FLATTEN",    "UNFLATTEN", "INTERP", "COMPARE",
                                             "PRINT_SIZE", "PRINT",     "SCAN"};
    if (selector < PF_Arbitrary_NEW_FUNC || selector > PF_Arbitrary_SCAN_FUNC) {
        return std::to_string(selector);
    }
    return kNames[selector];
}

}  // namespace

bool mayChangeValues(PF_Cmd command) {
    return command == PF_Cmd_USER_CHANGED_PARAM || command == PF_Cmd_EVENT;
}

std::string CommandResult::message() const {
    return {out.return_msg, strnlen(out.return_msg, sizeof(out.return_msg))};
}

std::string describeRequest(const Request& request) {
    std::string text = commandName(request.command);
    if (request.command == PF_Cmd_ARBITRARY_CALLBACK) text += " " + selectorName(request.selector);
    if (request.instance != 0) text += " of instance " + std::to_string(request.instance);
    return text;
}

CommandResult send(Session& session, const Request& request) {
    Guarded<PF_InData> in(inData(session, request));
    Guarded<PF_OutData> out(session.outPreset);
    CommandResult result;
    {
        const CallScope scope(request.command, describeRequest(request));
        result.error = callEffect(session, request, in.get(), out.get());
        checkRecords(session.books, in, out);
        if (request.params != nullptr) {
            request.params->check(mayChangeValues(request.command));
            if (mayChangeValues(request.command)) result.changed = request.params->changed();
        }
    }
    if (CallScope::current() == nullptr) session.handles.forgetRefusedLocks();
    result.out = *out;
    session.books.finished({request.command, request.instance, request.selector, result.error});
    return result;
}

}  // namespace host_sim
