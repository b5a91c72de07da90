// Switches with which a test makes the simulated host refuse things.
#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>

#include "host_api/types.h"

namespace host_sim {

// All switches start off. "nth" counts the effect's calls from the moment of the request, 1 being
// the next one, and refuses that one only.
//
// Threads: every function from any thread.
class Refusals {
public:
    void failAllocation(int nth);      // host_new_handle gives null
    void failAllAllocations(bool on);  // every one of them
    void failResize(int nth);          // host_resize_handle gives PF_Err_OUT_OF_MEMORY
    void failLock(int nth);            // host_lock_handle gives null
    void failAddParam(int nth, PF_Err error);
    void failRegistration(A_Err error);       // the callback's answer; 0 switches off
    void failPixelFormat(PF_Err error);       // GetPixelFormat's answer, nothing written; 0: off
    void failParamUpdate(PF_Err error);       // PF_UpdateParamUI's answer, nothing kept; 0: off
    void hideSuite(const std::string& name);  // not found, whatever the version
    void nullSuite(const std::string& name);  // success, but a null table
    void withoutBasicSuite(bool on);          // in_data->pica_basicP is null
    void replaceHandleOnResize(bool on);      // not a refusal: resize gives another handle
    // Everything off again.
    void clear();

    // Asked by the simulator. The first four count.
    bool refusesAllocation();
    bool refusesResize();
    bool refusesLock();
    PF_Err addParamError();
    A_Err registrationError() const;
    PF_Err pixelFormatError() const;
    PF_Err paramUpdateError() const;
    bool hidesSuite(const std::string& name) const;
    bool nullsSuite(const std::string& name) const;
    bool hidesBasicSuite() const;
    bool replacesHandles() const;

private:
    struct State {
        int allocation = 0;  // calls left until the refused one; 0: none
        int resize = 0;
        int lock = 0;
        int addParam = 0;
        bool allAllocations = false;
        bool noBasicSuite = false;
        bool replaceHandles = false;
        PF_Err addParamError = 0;
        PF_Err pixelFormatError = 0;
        PF_Err paramUpdateError = 0;
        A_Err registrationError = 0;
        std::set<std::string> hidden;
        std::set<std::string> nulls;
    };

    mutable std::mutex mutex_;
    State state_;
};

}  // namespace host_sim
