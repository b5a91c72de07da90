// Switches with which a test makes the simulated host refuse things.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>

#include "host_api/types.h"

namespace host_sim {

// The calls that can be refused, and what a refused one does.
enum class Refusal {
    kAllocation,    // host_new_handle gives null
    kResize,        // host_resize_handle gives PF_Err_OUT_OF_MEMORY
    kLock,          // host_lock_handle gives null
    kAcquisition,   // AcquireSuite: not found, whichever suite it is
    kSuiteTable,    // AcquireSuite: success, but a null table
    kGpuCall,       // a call of a GPU suite that can fail does so and writes nothing
    kAddParam,      // PF_ADD_PARAM answers the error
    kRegistration,  // the registration callback answers the error
    kPixelFormat,   // GetPixelFormat answers the error and writes nothing
    kParamUpdate    // PF_UpdateParamUI answers the error and keeps nothing
};
constexpr std::size_t kRefusals = static_cast<std::size_t>(Refusal::kParamUpdate) + 1;

constexpr int kEveryCall = 0;
constexpr PF_Err kRefused = 1;

// What AcquireSuite answers for one suite, whatever the version.
enum class SuiteAnswer { kTable, kNotFound, kNullTable, kErrorWithTable };

// All switches start off.
//
// Threads: every function from any thread.
class Refusals {
public:
    // The effect's nth call from now on is refused, 1 being the next one, or every call. The error
    // matters where the call answers one; 0 refuses nothing. Takes the place of the request before
    // it of its kind.
    void fail(Refusal which, int nth, PF_Err error = kRefused);
    void answerSuite(const std::string& name, SuiteAnswer answer);
    void withoutBasicSuite(bool on);      // in_data->pica_basicP is null
    void replaceHandleOnResize(bool on);  // not a refusal: resize gives another handle
    // Everything off again.
    void clear();
    // Whether such a call is to be refused by its number and has not come yet.
    bool isDue(Refusal which) const;

    // Asked by the simulator. Counts the call; 0: it is not refused.
    PF_Err answer(Refusal which);
    SuiteAnswer suiteAnswer(const std::string& name) const;
    bool hidesBasicSuite() const;
    bool replacesHandles() const;

private:
    // One kind of call.
    struct Switch {
        int callsLeft = 0;  // until the refused one; 0: none is refused by its number
        PF_Err always = 0;  // every call's answer
        PF_Err once = 0;    // that of the one refused by its number
        // Counts one call and gives its answer.
        PF_Err answer();
    };
    struct State {
        std::array<Switch, kRefusals> switches;
        bool noBasicSuite = false;
        bool replaceHandles = false;
        std::map<std::string, SuiteAnswer> suites;

        Switch& of(Refusal which) { return switches[static_cast<std::size_t>(which)]; }
    };

    mutable std::mutex mutex_;
    State state_;
};

}  // namespace host_sim
