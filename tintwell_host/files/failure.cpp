#include "tintwell_host/files/failure.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace program {
namespace {

// Of disks, file servers and a machine that is short of something just now.
constexpr int kPassing[] = {
    EAGAIN,    EBUSY,     EDQUOT,       EHOSTDOWN, EHOSTUNREACH, EINTR,        EIO,    EMFILE,
    ENETDOWN,  ENETRESET, ENETUNREACH,  ENFILE,    ENOBUFS,      ENOLCK,       ENOMEM, ENOSPC,
    ENOTCONN,  ESTALE,    ECONNABORTED, ETIMEDOUT, ECONNRESET,   ECONNREFUSED,
#ifdef EREMOTEIO
    EREMOTEIO,
#endif
};

}  // namespace

Exit exitFor(int error) {
    const bool passes =
        std::find(std::begin(kPassing), std::end(kPassing), error) != std::end(kPassing);
    return passes ? Exit::kTryAgain : Exit::kWrongInput;
}

Unreadable::Unreadable(const std::string& path, int error)
    : Unreadable(path, std::strerror(error), exitFor(error)) {}

}  // namespace program
