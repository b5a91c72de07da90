// The kinds of calls that can fail.
#pragma once

#include <string>
#include <vector>

#include "tests/faults/in_turn.h"

namespace faults {

// Of the C and C++ library.
inline const std::string kNew = "operator new";
inline const std::string kThread = "thread start";
inline const std::string kOpen = "fopen";
inline const std::string kRead = "fread";
inline const std::string kWrite = "fwrite, fprintf";
inline const std::string kClose = "fclose";
// Those of the log, whose lines may be lost.
inline const std::vector<std::string> kLogKinds = {kOpen, kWrite, kClose};
// Of the host.
inline const std::string kHandle = "host_new_handle";
inline const std::string kLock = "host_lock_handle";
inline const std::string kResize = "host_resize_handle";
inline const std::string kSuite = "AcquireSuite";
inline const std::string kNoTable = "AcquireSuite's table";
inline const std::string kAddParam = "add_param";
inline const std::string kRegister = "the registration";
inline const std::string kFormat = "GetPixelFormat";
inline const std::string kUpdate = "PF_UpdateParamUI";
inline const std::string kGpuCall = "a GPU suite's call";
// Of the software device.
inline const std::string kLibrary = "a device's library";
inline const std::string kFunction = "a device's function";
inline const std::string kPipeline = "a device's pipeline";
inline const std::string kBuffer = "a device's buffer";
inline const std::string kCommands = "a device's command buffer";
inline const std::string kEncoder = "a device's encoder";
inline const std::string kExecution = "a device's execution";

// An arbitrary error of the host's callbacks.
constexpr int kHostError = 77;

// Those of the library and of the host.
std::vector<Kind> hostKinds();
// All of them. Afterwards the device has no faults.
std::vector<Kind> gpuKinds();

}  // namespace faults
