#include "host_sim/arbitrary_calls.h"

#include <algorithm>
#include <cstring>

#include "host_sim/command.h"
#include "host_sim/session.h"
#include "host_sim/values/guarded.h"

namespace host_sim {
namespace {

constexpr A_u_long kUnwrittenSize = 0xFFFFFFFF;
constexpr PF_ArbCompareResult kUnwrittenResult = -1;

// Stands in every handle pointer before a call: tells an unwritten answer from a null one.
char* unwrittenMaster = nullptr;
constexpr PF_ArbitraryH kUnwrittenHandle = &unwrittenMaster;

// A buffer of exactly `size` bytes between canaries.
class GuardedBuffer {
public:
    explicit GuardedBuffer(std::size_t size) : bytes_(size + 2 * kMargin, kCanary) {
        std::fill_n(data(), size, kUnwrittenByte);
    }

    std::uint8_t* data() { return bytes_.data() + kMargin; }
    std::size_t size() const { return bytes_.size() - 2 * kMargin; }

    bool isIntact() const {
        const auto whole = [](std::uint8_t byte) { return byte == kCanary; };
        return std::all_of(bytes_.begin(), bytes_.begin() + kMargin, whole) &&
               std::all_of(bytes_.end() - kMargin, bytes_.end(), whole);
    }

private:
    static constexpr std::ptrdiff_t kMargin = 64;
    static constexpr std::uint8_t kUnwrittenByte = 0xCD;

    std::vector<std::uint8_t> bytes_;
};

}  // namespace

ArbitraryCalls::ArbitraryCalls(Session& session, const PF_ArbitraryDef& declared, int instance)
    : session_(session), declared_(declared), instance_(instance) {}

Answer<PF_ArbitraryH> ArbitraryCalls::create() const {
    PF_ArbitraryH made = kUnwrittenHandle;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_NEW_FUNC);
    extra.u.new_func_params = {declared_.refconPV, &made};
    const PF_Err error = raw(extra);
    return handleAnswer(PF_Arbitrary_NEW_FUNC, error, made);
}

Answer<PF_ArbitraryH> ArbitraryCalls::copy(PF_ArbitraryH source) const {
    PF_ArbitraryH made = kUnwrittenHandle;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_COPY_FUNC);
    extra.u.copy_func_params = {declared_.refconPV, source, &made};
    const PF_Err error = raw(extra);
    return handleAnswer(PF_Arbitrary_COPY_FUNC, error, made);
}

Answer<PF_ArbitraryH> ArbitraryCalls::interpolate(PF_ArbitraryH left, PF_ArbitraryH right,
                                                  double at) const {
    PF_ArbitraryH made = kUnwrittenHandle;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_INTERP_FUNC);
    extra.u.interp_func_params = {declared_.refconPV, left, right, at, &made};
    const PF_Err error = raw(extra);
    return handleAnswer(PF_Arbitrary_INTERP_FUNC, error, made);
}

PF_Err ArbitraryCalls::dispose(PF_ArbitraryH handle) const {
    PF_ArbParamsExtra extra = record(PF_Arbitrary_DISPOSE_FUNC);
    extra.u.dispose_func_params = {declared_.refconPV, handle};
    return raw(extra);
}

Answer<PF_ArbCompareResult> ArbitraryCalls::compare(PF_ArbitraryH a, PF_ArbitraryH b) const {
    PF_ArbCompareResult result = kUnwrittenResult;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_COMPARE_FUNC);
    extra.u.compare_func_params = {declared_.refconPV, a, b, &result};
    const PF_Err error = raw(extra);
    if (error == PF_Err_NONE &&
        (result < PF_ArbCompare_EQUAL || result > PF_ArbCompare_NOT_EQUAL)) {
        problem(PF_Arbitrary_COMPARE_FUNC, "The effect gave no result of a comparison");
    }
    return {error, result};
}

Answer<A_u_long> ArbitraryCalls::flatSize(PF_ArbitraryH handle) const {
    A_u_long size = kUnwrittenSize;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_FLAT_SIZE_FUNC);
    extra.u.flat_size_func_params = {declared_.refconPV, handle, &size};
    const PF_Err error = raw(extra);
    return sizeAnswer(PF_Arbitrary_FLAT_SIZE_FUNC, error, size);
}

Answer<std::vector<std::uint8_t>> ArbitraryCalls::flatten(PF_ArbitraryH handle,
                                                          std::optional<A_u_long> size) const {
    if (!size) {
        const Answer<A_u_long> asked = flatSize(handle);
        if (asked.error != PF_Err_NONE) return {asked.error, {}};
        size = asked.value;
    }
    GuardedBuffer buffer(*size);
    PF_ArbParamsExtra extra = record(PF_Arbitrary_FLATTEN_FUNC);
    extra.u.flatten_func_params = {declared_.refconPV, handle, *size, buffer.data()};
    const PF_Err error = raw(extra);
    if (!buffer.isIntact()) {
        problem(PF_Arbitrary_FLATTEN_FUNC, "Bytes beside the buffer were overwritten");
    }
    return {error, {buffer.data(), buffer.data() + *size}};
}

Answer<PF_ArbitraryH> ArbitraryCalls::unflatten(const std::vector<std::uint8_t>& bytes) const {
    // A copy without spare room, so that a read too far shows.
    const std::vector<std::uint8_t> exact(bytes.begin(), bytes.end());
    return unflattenFrom(exact.data(), static_cast<A_u_long>(exact.size()));
}

Answer<PF_ArbitraryH> ArbitraryCalls::unflattenNull() const {
    return unflattenFrom(nullptr, 0);
}

Answer<PF_ArbitraryH> ArbitraryCalls::unflattenFrom(const void* bytes, A_u_long size) const {
    PF_ArbitraryH made = kUnwrittenHandle;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_UNFLATTEN_FUNC);
    extra.u.unflatten_func_params = {declared_.refconPV, size, bytes, &made};
    const PF_Err error = raw(extra);
    return handleAnswer(PF_Arbitrary_UNFLATTEN_FUNC, error, made);
}

Answer<A_u_long> ArbitraryCalls::printSize(PF_ArbitraryH handle) const {
    A_u_long size = kUnwrittenSize;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_PRINT_SIZE_FUNC);
    extra.u.print_size_func_params = {declared_.refconPV, handle, &size};
    const PF_Err error = raw(extra);
    return sizeAnswer(PF_Arbitrary_PRINT_SIZE_FUNC, error, size);
}

Answer<std::string> ArbitraryCalls::print(PF_ArbitraryH handle,
                                          std::optional<A_u_long> size) const {
    if (!size) {
        const Answer<A_u_long> asked = printSize(handle);
        if (asked.error != PF_Err_NONE) return {asked.error, {}};
        size = asked.value;
    }
    GuardedBuffer buffer(*size);
    auto* text = reinterpret_cast<char*>(buffer.data());
    PF_ArbParamsExtra extra = record(PF_Arbitrary_PRINT_FUNC);
    extra.u.print_func_params = {declared_.refconPV, PF_ArbPrint_NONE, handle, *size, text};
    const PF_Err error = raw(extra);
    if (!buffer.isIntact()) {
        problem(PF_Arbitrary_PRINT_FUNC, "Bytes beside the buffer were overwritten");
    }
    if (error != PF_Err_NONE || *size == 0) return {error, {}};
    if (std::memchr(text, 0, *size) == nullptr) {
        problem(PF_Arbitrary_PRINT_FUNC, "The printed text has no end");
    }
    return {error, {text, strnlen(text, *size)}};
}

Answer<PF_ArbitraryH> ArbitraryCalls::scan(std::string_view text) const {
    const std::vector<char> exact(text.begin(), text.end());
    PF_ArbitraryH made = kUnwrittenHandle;
    PF_ArbParamsExtra extra = record(PF_Arbitrary_SCAN_FUNC);
    extra.u.scan_func_params = {declared_.refconPV, exact.data(),
                                static_cast<A_u_long>(exact.size()), &made};
    const PF_Err error = raw(extra);
    return handleAnswer(PF_Arbitrary_SCAN_FUNC, error, made);
}

PF_ArbParamsExtra ArbitraryCalls::record(PF_FunctionSelector selector) const {
    PF_ArbParamsExtra extra = {};
    extra.which_function = selector;
    extra.id = declared_.id;
    return extra;
}

PF_Err ArbitraryCalls::raw(const PF_ArbParamsExtra& extra) const {
    Guarded<PF_ArbParamsExtra> guarded(extra);
    Request request;
    request.command = PF_Cmd_ARBITRARY_CALLBACK;
    request.instance = instance_;
    request.extra = guarded.get();
    request.selector = extra.which_function;
    const PF_Err error = send(session_, request).error;
    if (!guarded.isIntact()) {
        problem(extra.which_function, "Bytes beside the extra record were overwritten");
    }
    return error;
}

Answer<PF_ArbitraryH> ArbitraryCalls::handleAnswer(PF_FunctionSelector selector, PF_Err error,
                                                   PF_ArbitraryH handle) const {
    if (error != PF_Err_NONE) {
        if (handle != kUnwrittenHandle)
            problem(selector, "The effect gave an error and stored a handle");
        return {error, nullptr};
    }
    if (handle == kUnwrittenHandle) {
        problem(selector, "The effect stored no handle");
        return {error, nullptr};
    }
    if (handle != nullptr && !session_.handles.isLive(handle)) {
        problem(selector, "The effect stored an unknown handle");
        return {error, nullptr};
    }
    return {error, handle};
}

Answer<A_u_long> ArbitraryCalls::sizeAnswer(PF_FunctionSelector selector, PF_Err error,
                                            A_u_long size) const {
    if (size != kUnwrittenSize) return {error, size};
    if (error == PF_Err_NONE) problem(selector, "The effect stored no size");
    return {error, 0};
}

void ArbitraryCalls::problem(PF_FunctionSelector selector, const std::string& what) const {
    Request request;
    request.command = PF_Cmd_ARBITRARY_CALLBACK;
    request.instance = instance_;
    request.selector = selector;
    session_.books.problemAtEnd(what + " (during " + describeRequest(request) + ")");
}

}  // namespace host_sim
