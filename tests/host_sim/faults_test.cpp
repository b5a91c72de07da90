// Each fault of the test module is caught with its own message; nothing else is.
#include <gtest/gtest.h>

#include <cctype>
#include <ostream>
#include <string>
#include <vector>

#include "session_script.h"

namespace {

using Problems = std::vector<std::string>;

struct Fault {
    std::string name;
    Problems problems;
};

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.name;
}

const Fault kFaults[] = {
    {"writes beside out_data",
     {"Bytes beside out_data were overwritten (during PF_Cmd_GLOBAL_SETUP)."}},
    {"uses a wrong effect_ref",
     {"ClearSupportedPixelFormats was given an unknown effect_ref (during "
      "PF_Cmd_GLOBAL_SETUP)."}},
    {"forgets a suite",
     {"The suite \"PF Pixel Format Suite\" version 1 was acquired 1 time(s) and released only 0."}},
    {"releases a suite twice",
     {"The suite \"PF Pixel Format Suite\" version 1 was released more often than acquired (during "
      "PF_Cmd_GLOBAL_SETUP)."}},
    {"gives a slider bad ranges",
     {"Parameter \"Amount\" has ranges or a default that do not fit (during "
      "PF_Cmd_PARAMS_SETUP)."}},
    {"forgets to clear a definition",
     {"Parameter \"Amount\" was not cleared before it was filled (during PF_Cmd_PARAMS_SETUP)."}},
    {"leaves a name without an end",
     {"add_param was given a name without an end (during PF_Cmd_PARAMS_SETUP)."}},
    {"declares an unknown type",
     {"Parameter \"Amount\" is of type 7, which is not simulated (during PF_Cmd_PARAMS_SETUP)."}},
    {"uses an id twice",
     {"Parameter \"Text\" has the id of an earlier one (during PF_Cmd_PARAMS_SETUP)."}},
    {"gives a default that is no handle",
     {"Parameter \"Text\" has a default that is no handle (during PF_Cmd_PARAMS_SETUP).",
      "host_get_handle_size was given handle 1 (4 bytes, made during PF_Cmd_PARAMS_SETUP), which "
      "was disposed of during PF_Cmd_PARAMS_SETUP (during PF_Cmd_ARBITRARY_CALLBACK COPY of "
      "instance 1).",
      "host_lock_handle was given handle 1 (4 bytes, made during PF_Cmd_PARAMS_SETUP), which was "
      "disposed of during PF_Cmd_PARAMS_SETUP (during PF_Cmd_ARBITRARY_CALLBACK COPY of instance "
      "1).",
      "host_unlock_handle was given handle 1 (4 bytes, made during PF_Cmd_PARAMS_SETUP), which was "
      "disposed of during PF_Cmd_PARAMS_SETUP (during PF_Cmd_ARBITRARY_CALLBACK COPY of instance "
      "1).",
      "host_dispose_handle was given handle 1 (4 bytes, made during PF_Cmd_PARAMS_SETUP), which "
      "was disposed of during PF_Cmd_PARAMS_SETUP (during PF_Cmd_ARBITRARY_CALLBACK DISPOSE)."}},
    {"gives a value",
     {"Parameter \"Text\" has a value, which must be null (during PF_Cmd_PARAMS_SETUP)."}},
    {"does not supervise a button",
     {"Parameter \"Press\" is a button, but not supervised (during PF_Cmd_PARAMS_SETUP)."}},
    {"inserts a parameter",
     {"add_param was given the index 1, but parameters can only be appended (-1) (during "
      "PF_Cmd_PARAMS_SETUP).",
      "The handle 1 (4 bytes, made during PF_Cmd_PARAMS_SETUP) was never disposed of.",
      "The effect answered PF_Cmd_PARAMS_SETUP with the error 513."}},
    {"adds a null definition",
     {"add_param was given a null definition (during PF_Cmd_PARAMS_SETUP)."}},
    {"counts wrongly",
     {"PF_Cmd_PARAMS_SETUP answered num_params 3, but with the input layer there are 4."}},
    {"writes past a block",
     {"Bytes beside handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1) were overwritten, "
      "as seen in host_dispose_handle (during PF_Cmd_RENDER of instance 1)."}},
    {"writes before a block",
     {"Bytes beside handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1) were overwritten, "
      "as seen in host_dispose_handle (during PF_Cmd_RENDER of instance 1)."}},
    {"unlocks twice",
     {"The handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1) was unlocked more often "
      "than locked (during PF_Cmd_RENDER of instance 1)."}},
    {"leaves a lock",
     {"The handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1) was never disposed of, and "
      "is locked 1 time(s), first during PF_Cmd_RENDER of instance 1."}},
    {"resizes a locked handle",
     {"The handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1) was resized while locked 1 "
      "time(s), first during PF_Cmd_RENDER of instance 1 (during PF_Cmd_RENDER of instance 1)."}},
    {"leaks a handle",
     {"The handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1) was never disposed of."}},
    {"disposes of a locked handle",
     {"The handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1) was disposed of while "
      "locked 1 time(s), first during PF_Cmd_RENDER of instance 1 (during PF_Cmd_RENDER of "
      "instance 1)."}},
    {"disposes twice",
     {"host_dispose_handle was given handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1), "
      "which was disposed of during PF_Cmd_RENDER of instance 1 (during PF_Cmd_RENDER of instance "
      "1)."}},
    {"uses a disposed handle",
     {"host_lock_handle was given handle 3 (8 bytes, made during PF_Cmd_RENDER of instance 1), "
      "which was disposed of during PF_Cmd_RENDER of instance 1 (during PF_Cmd_RENDER of instance "
      "1)."}},
    {"asks the size of null",
     {"host_get_handle_size was given a null handle (during PF_Cmd_RENDER of instance 1)."}},
    {"unlocks a wild pointer",
     {"host_unlock_handle was given a pointer that is no handle (during PF_Cmd_RENDER of instance "
      "1)."}},
    {"adds a parameter late",
     {"add_param was called outside PF_Cmd_PARAMS_SETUP (during PF_Cmd_RENDER of instance 1)."}},
    {"changes a parameter",
     {"The definition of parameter 1 was changed (during PF_Cmd_RENDER of instance 1)."}},
    {"exchanges a parameter",
     {"The pointer to parameter 1 changed (during PF_Cmd_RENDER of instance 1)."}},
    {"overwrites the end of params",
     {"The end of the params array was overwritten (during PF_Cmd_RENDER of instance 1)."}},
    {"writes in_data", {"in_data was written (during PF_Cmd_RENDER of instance 1)."}},
    {"leaves a message without an end",
     {"return_msg has no end (during PF_Cmd_RENDER of instance 1)."}},
    {"throws", {"An exception left the effect (during PF_Cmd_RENDER of instance 1)."}},
    {"unlocks the host's lock",
     {"The handle 2 (4 bytes, made during PF_Cmd_ARBITRARY_CALLBACK COPY of instance 1) was "
      "unlocked more often than locked (during PF_Cmd_RENDER of instance 1)."}},
    {"asks about a foreign world",
     {"GetPixelFormat was given a world that is not of the current command (during PF_Cmd_RENDER "
      "of instance 1)."}},
    {"adds a format late",
     {"AddSupportedPixelFormat was called outside PF_Cmd_GLOBAL_SETUP (during PF_Cmd_RENDER of "
      "instance 1)."}},
    {"writes after a row",
     {"The effect wrote outside the output, at byte 0 after the end of row 1 (during PF_Cmd_RENDER "
      "of instance 1)."}},
    {"writes before the picture",
     {"The effect wrote outside the output, at byte 7 of row 1 (during PF_Cmd_RENDER of instance "
      "1)."}},
    {"writes a row too many",
     {"The effect wrote outside the output, at byte 8 of row 4 (during PF_Cmd_RENDER of instance "
      "1)."}},
    {"writes the input", {"The effect wrote into the input (during PF_Cmd_RENDER of instance 1)."}},
    {"edits without a flag",
     {"Parameter 1 was edited, but not flagged as changed (during PF_Cmd_USER_CHANGED_PARAM of "
      "instance 1)."}},
    {"flags more than a change",
     {"Parameter 2 has the change flags 91 (during PF_Cmd_USER_CHANGED_PARAM of instance 1)."}},
    {"stores no handle on a press", {"The effect put an unknown handle into parameter 2."}},
    {"updates the input layer",
     {"PF_UpdateParamUI was given index 0 (during PF_Cmd_UPDATE_PARAMS_UI of instance 1)."}},
    {"updates with a null definition",
     {"PF_UpdateParamUI was given a null definition (during PF_Cmd_UPDATE_PARAMS_UI of instance "
      "1)."}},
    {"updates with another type",
     {"PF_UpdateParamUI was given a definition of another parameter type (during "
      "PF_Cmd_UPDATE_PARAMS_UI of instance 1)."}},
    {"prints no end",
     {"The printed text has no end (during PF_Cmd_ARBITRARY_CALLBACK PRINT of instance 1)."}},
    {"prints too far",
     {"Bytes beside the buffer were overwritten (during PF_Cmd_ARBITRARY_CALLBACK PRINT of "
      "instance 1)."}},
    {"flattens too far",
     {"Bytes beside the buffer were overwritten (during PF_Cmd_ARBITRARY_CALLBACK FLATTEN of "
      "instance 1)."}},
    {"copies nothing",
     {"The effect stored no handle (during PF_Cmd_ARBITRARY_CALLBACK COPY of instance 1)."}},
    {"copies to no handle",
     {"The effect stored an unknown handle (during PF_Cmd_ARBITRARY_CALLBACK COPY of instance "
      "1).",
      "The handle 2 (4 bytes, made during PF_Cmd_ARBITRARY_CALLBACK COPY of instance 1) was never "
      "disposed of."}},
    {"tells no size",
     {"The effect stored no size (during PF_Cmd_ARBITRARY_CALLBACK FLAT_SIZE of instance 1)."}},
    {"compares nothing",
     {"The effect gave no result of a comparison (during PF_Cmd_ARBITRARY_CALLBACK COMPARE of "
      "instance 1)."}},
    {"updates during a render",
     {"PF_UpdateParamUI was called in a command that forbids it (during PF_Cmd_RENDER of instance "
      "1)."}},
    {"changes a text behind its pointer",
     {"The text \"first\" of parameter 3 has become \"other\" behind its pointer (in no command of "
      "this thread)."}},
    {"registers nothing",
     {"The module registered 0 effects instead of one (during the registration).",
      "The effect is not registered."}},
    {"registers twice",
     {"The module registered 2 effects instead of one (during the registration)."}},
    {"registers a null text",
     {"The registration callback was given a null text (during the registration)."}},
};

class Faults : public testing::TestWithParam<Fault> {};

TEST_P(Faults, areCaughtWithTheirStory) {
    EXPECT_EQ(runSession(withFault(host_sim::premierePro(), GetParam().name)), GetParam().problems);
}

INSTANTIATE_TEST_SUITE_P(Simulator, Faults, testing::ValuesIn(kFaults), [](const auto& row) {
    std::string name = row.param.name;
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    }
    return name;
});

}  // namespace
