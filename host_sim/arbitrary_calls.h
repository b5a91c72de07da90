// The life of an arbitrary-data parameter's value, each step through the effect's
// PF_Cmd_ARBITRARY_CALLBACK.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host_api/arbitrary_data.h"

namespace host_sim {

class Session;

// What the effect answered. `value` is the answer's initial value when nothing was written.
template <class Value>
struct Answer {
    PF_Err error = 0;
    Value value = {};
};

// One arbitrary parameter, on behalf of an instance. Handles given to the effect are locked by the
// host round the call, effect_ref is null, and there are no params. Handles returned belong to the
// caller, who gives them to dispose(). Problems: an answer left unwritten although the error is 0,
// an unknown handle, bytes written beside a buffer, a printed text without an end.
//
// Threads: any, also at once on the same handles as long as nobody disposes of them.
class ArbitraryCalls {
public:
    ArbitraryCalls(Session& session, const PF_ArbitraryDef& declared, int instance);

    Answer<PF_ArbitraryH> create() const;
    Answer<PF_ArbitraryH> copy(PF_ArbitraryH source) const;
    Answer<PF_ArbitraryH> interpolate(PF_ArbitraryH left, PF_ArbitraryH right, double at) const;
    PF_Err dispose(PF_ArbitraryH handle) const;
    Answer<PF_ArbCompareResult> compare(PF_ArbitraryH a, PF_ArbitraryH b) const;

    Answer<A_u_long> flatSize(PF_ArbitraryH handle) const;
    // Asks for the size first unless one is given, which may be wrong on purpose. The buffer holds
    // 0xCD bytes where the effect writes nothing.
    Answer<std::vector<std::uint8_t>> flatten(PF_ArbitraryH handle,
                                              std::optional<A_u_long> size = {}) const;
    Answer<PF_ArbitraryH> unflatten(const std::vector<std::uint8_t>& bytes) const;
    Answer<PF_ArbitraryH> unflattenNull() const;  // a null pointer and no bytes

    Answer<A_u_long> printSize(PF_ArbitraryH handle) const;
    // The text before the terminating zero; sizes as in flatten().
    Answer<std::string> print(PF_ArbitraryH handle, std::optional<A_u_long> size = {}) const;
    // The text is passed without a terminating zero. On an error the value is null.
    Answer<PF_ArbitraryH> scan(std::string_view text) const;

    // Sends a record of the caller's own making as it is.
    PF_Err raw(const PF_ArbParamsExtra& extra) const;

private:
    PF_ArbParamsExtra record(PF_FunctionSelector selector) const;
    Answer<PF_ArbitraryH> handleAnswer(PF_FunctionSelector selector, PF_Err error,
                                       PF_ArbitraryH handle) const;
    Answer<A_u_long> sizeAnswer(PF_FunctionSelector selector, PF_Err error, A_u_long size) const;
    Answer<PF_ArbitraryH> unflattenFrom(const void* bytes, A_u_long size) const;
    void problem(PF_FunctionSelector selector, const std::string& what) const;

    Session& session_;
    PF_ArbitraryDef declared_;
    int instance_;
};

}  // namespace host_sim
