// Everything that one open host keeps, in one place, and the way to it for the callbacks that carry
// no context.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "host_api/host_api.h"
#include "host_sim/memory/handle_memory.h"
#include "host_sim/suites/declared_params.h"
#include "host_sim/suites/param_update_book.h"
#include "host_sim/suites/pixel_format_book.h"
#include "host_sim/suites/suite_ledger.h"
#include "host_sim/values/books.h"
#include "host_sim/values/personality.h"
#include "host_sim/values/refusals.h"

// The hosts leave this type incomplete to effects.
struct PF_ProgressInfo {
    int instance;
};

namespace host_sim {

// A process is one application: there is at most one session at a time.
class Session {
public:
    // Throws SimError while another session is open.
    explicit Session(const Personality& hostPersonality);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // The open session. Without one the process ends with a message: an effect that calls the host
    // then has nobody to answer.
    static Session& current();
    // The same for a callback, which is told to onCallback first.
    static Session& called();

    // Instance behind an effect_ref (0: the effect itself); an unknown one is a problem and gives
    // nothing. Threads: any.
    std::optional<int> instanceOf(PF_ProgPtr effectRef, const char* callback);
    // The effect_ref of an instance, made when first asked for and valid as long as the session.
    PF_ProgPtr effectRef(int instance);

    Personality personality;
    Books books;
    Refusals refusals;
    HandleMemory handles{books, refusals};
    SuiteLedger suites{books, refusals};
    PixelFormatBook formats{books, refusals};
    DeclaredParams params{books, refusals, handles, personality};
    ParamUpdateBook paramUpdates{books, refusals, params};
    PF_FilterProc entry = nullptr;
    // What out_data holds when a command begins.
    PF_OutData outPreset = {};
    // Called, unless empty, whenever the effect calls the host, on the thread that does.
    std::function<void()> onCallback;
    _PF_UtilCallbacks utilities;
    SPBasicSuite basic;

private:
    std::mutex mutex_;
    std::map<int, std::unique_ptr<PF_ProgressInfo>> refs_;
    PF_PixelFormatSuite pixelFormatTable_;
    PF_ParamUtilsSuite3 paramUtilsTable_;
};

}  // namespace host_sim
