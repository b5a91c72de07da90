// Switches with which a test makes the simulated host refuse things.
#pragma once

#include <array>
#include <cstddef>
#include <mutex>
#include <set>
#include <string>

#include "host_api/types.h"

namespace host_sim {

// What can be refused by its number.
enum class Refusal {
    kAllocation,
    kResize,
    kLock,
    kAcquisition,
    kSuiteTable,
    kGpuCall,
    kAddParam,
    kRegistration,
    kPixelFormat,
    kParamUpdate
};
constexpr std::size_t kRefusals = static_cast<std::size_t>(Refusal::kParamUpdate) + 1;

// All switches start off. "nth" counts the effect's calls from the moment of the request, 1 being
// the next one, and refuses that one only; where it may be left out it is 0, which refuses them
// all, and elsewhere at least 1. A request takes the place of the one before it of its kind.
//
// Threads: every function from any thread.
class Refusals {
public:
    void failAllocation(int nth);      // host_new_handle gives null
    void failAllAllocations(bool on);  // every one of them
    void failResize(int nth);          // host_resize_handle gives PF_Err_OUT_OF_MEMORY
    void failLock(int nth);            // host_lock_handle gives null
    // Answers of PF_ADD_PARAM, of the registration callback, of GetPixelFormat, which writes
    // nothing then, and of PF_UpdateParamUI, which keeps nothing. The error 0 switches off.
    void failAddParam(PF_Err error, int nth = 0);
    void failRegistration(A_Err error, int nth = 0);
    void failPixelFormat(PF_Err error, int nth = 0);
    void failParamUpdate(PF_Err error, int nth = 0);
    void failAcquisition(int nth);  // not found, whichever suite it is
    void nullAcquisition(int nth);  // success, but a null table
    // A call of a GPU suite that can fail does so and writes nothing, whichever it is.
    void failGpuCall(int nth);
    void hideSuite(const std::string& name);    // not found, whatever the version
    void nullSuite(const std::string& name);    // success, but a null table
    void refuseSuite(const std::string& name);  // an error, though the table is given
    void withoutBasicSuite(bool on);            // in_data->pica_basicP is null
    void replaceHandleOnResize(bool on);        // not a refusal: resize gives another handle
    // Everything off again.
    void clear();
    // Whether such a call is to be refused by its number and has not come yet.
    bool isDue(Refusal which) const;

    // Asked by the simulator. All but the const ones count.
    bool refusesAllocation();
    bool refusesResize();
    bool refusesLock();
    bool refusesAcquisition();
    bool nullsAcquisition();
    bool refusesGpuCall();
    PF_Err addParamError();
    A_Err registrationError();
    PF_Err pixelFormatError();
    PF_Err paramUpdateError();
    bool hidesSuite(const std::string& name) const;
    bool nullsSuite(const std::string& name) const;
    bool refusesSuite(const std::string& name) const;
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
        std::set<std::string> hidden;
        std::set<std::string> nulls;
        std::set<std::string> refused;

        Switch& of(Refusal which) { return switches[static_cast<std::size_t>(which)]; }
    };

    static constexpr PF_Err kRefused = 1;

    void set(Refusal which, int nth, PF_Err error = kRefused);
    PF_Err answer(Refusal which);

    mutable std::mutex mutex_;
    State state_;
};

}  // namespace host_sim
