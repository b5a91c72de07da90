#include "effect/arbitrary.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <string>

#include "effect/host_handle.h"
#include "native/src/log.h"
#include "native/src/lut_text.h"

namespace tw_effect {
namespace {

constexpr char kBytes[] = {'T', 'W', 'L', 'U', 'T'};
constexpr char kUtf16[] = {'T', 0, 'W', 0, 'L', 0, 'U', 0, 'T', 0};

// How many of the calls that a host makes all the time reach the log.
constexpr int kLoggedCalls = 20;

const char* selectorName(PF_FunctionSelector selector) {
    constexpr const char* kNames[] = {"NEW",        "DISPOSE",   "COPY",   "FLAT_SIZE",
                                      "FLATTEN",    "UNFLATTEN", "INTERP", "COMPARE",
                                      "PRINT_SIZE", "PRINT",     "SCAN"};
    return selector >= 0 && selector <= PF_Arbitrary_SCAN_FUNC ? kNames[selector] : "?";
}

// Text conversions are rare and always logged; of the others only the first ones of the process.
void logCall(PF_FunctionSelector selector) {
    static std::atomic<std::int32_t> logged{0};
    const bool frequent = selector <= PF_Arbitrary_COMPARE_FUNC;
    if (frequent && logged.fetch_add(1, std::memory_order_acq_rel) >= kLoggedCalls) return;
    tw::logLine("Arb %s", selectorName(selector));
}

PF_Handle newText(const PF_InData& host, const std::string& text) {
    const std::vector<std::uint16_t> units = tw::toUtf16(text);
    return newHandle(host, units.data(), units.size() * sizeof units[0]);
}

A_u_longlong sizeOf(const PF_InData& host, PF_Handle handle) {
    return handle ? host.utils->host_get_handle_size(handle) : 0;
}

// A buffer that is too small stays as it is: half a text would be worse than none.
void flatten(const PF_InData& host, PF_Handle handle, void* buffer, A_u_long bufferSize) {
    if (!handle) return;
    const LockedHandle locked(host, handle);
    if (locked.data() && buffer && locked.size() <= bufferSize) {
        std::memcpy(buffer, locked.data(), locked.size());
    }
}

// A project with foreign or damaged data opens without a LUT rather than not at all.
PF_Handle unflatten(const PF_InData& host, const void* flat, A_u_long size) {
    if (flat && LooksEmbedded(flat, size)) return newHandle(host, flat, size);
    OwnedHandle none(host, NewEmptyArb(host));
    tw::logLine("Arb UNFLATTEN: %u bytes are not TWLUT text, using none", size);
    return none.release();
}

// Raw bytes decide: the same text in 8-bit and in 16-bit form is not equal.
PF_ArbCompareResult compare(const PF_InData& host, PF_Handle a, PF_Handle b) {
    if (!a && !b) return PF_ArbCompare_EQUAL;
    if (!a || !b) return PF_ArbCompare_NOT_EQUAL;
    if (sizeOf(host, a) != sizeOf(host, b)) return PF_ArbCompare_NOT_EQUAL;
    const LockedHandle lockedA(host, a);
    const LockedHandle lockedB(host, b);
    if (!lockedA.data() || !lockedB.data()) return PF_ArbCompare_NOT_EQUAL;
    const bool same = std::memcmp(lockedA.data(), lockedB.data(), lockedA.size()) == 0;
    return same ? PF_ArbCompare_EQUAL : PF_ArbCompare_NOT_EQUAL;
}

std::string textOf(const PF_InData& host, PF_Handle handle) {
    const LockedHandle locked(host, handle);
    return tw::embeddedText(locked.data(), locked.size());
}

void print(const PF_InData& host, PF_Handle handle, char* buffer, A_u_long bufferSize) {
    const std::string text = textOf(host, handle);
    if (!buffer || bufferSize == 0) return;
    const std::size_t count = std::min<std::size_t>(bufferSize - 1, text.size());
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
}

// What is stored is the scanned text itself; parsing it only shows that it can be read.
PF_Err scan(const PF_InData& host, const char* bytes, A_u_long count, PF_ArbitraryH* result) {
    const std::string text = bytes ? std::string(bytes, count) : std::string();
    tw::Lut3D scratch;
    std::string failure;
    if (!tw::parseEmbeddedText(text, scratch, &failure)) {
        tw::logLine("  scan %u bytes failed: %s", count, failure.c_str());
        return PF_Err_CANNOT_PARSE_KEYFRAME_TEXT;
    }
    *result = newText(host, text);
    return PF_Err_NONE;
}

}  // namespace

bool LooksEmbedded(const void* bytes, std::size_t size) {
    return size >= sizeof kUtf16 && (std::memcmp(bytes, kBytes, sizeof kBytes) == 0 ||
                                     std::memcmp(bytes, kUtf16, sizeof kUtf16) == 0);
}

PF_Handle NewEmptyArb(const PF_InData& host) {
    return newText(host, "TWLUT0");
}

PF_Handle CopyArb(const PF_InData& host, PF_Handle source) {
    const LockedHandle locked(host, source);
    if (locked.data() && LooksEmbedded(locked.data(), locked.size())) {
        return newHandle(host, locked.data(), locked.size());
    }
    return NewEmptyArb(host);
}

PF_Err Arbitrary(const PF_InData& host, const PF_ArbParamsExtra& call) {
    const auto& u = call.u;
    const bool disposes = call.which_function == PF_Arbitrary_DISPOSE_FUNC;
    // Given back also when there is no memory for the log's line.
    OwnedHandle disposed(host, disposes ? u.dispose_func_params.arbH : nullptr);
    logCall(call.which_function);
    switch (call.which_function) {
        case PF_Arbitrary_NEW_FUNC:
            *u.new_func_params.arbPH = NewEmptyArb(host);
            break;
        case PF_Arbitrary_DISPOSE_FUNC:
            disposed.dispose();
            break;
        case PF_Arbitrary_COPY_FUNC:
            *u.copy_func_params.dst_arbPH = CopyArb(host, u.copy_func_params.src_arbH);
            break;
        case PF_Arbitrary_FLAT_SIZE_FUNC:
            *u.flat_size_func_params.flat_data_sizePLu =
                static_cast<A_u_long>(sizeOf(host, u.flat_size_func_params.arbH));
            break;
        case PF_Arbitrary_FLATTEN_FUNC:
            flatten(host, u.flatten_func_params.arbH, u.flatten_func_params.flat_dataPV,
                    u.flatten_func_params.buf_sizeLu);
            break;
        case PF_Arbitrary_UNFLATTEN_FUNC:
            *u.unflatten_func_params.arbPH = unflatten(host, u.unflatten_func_params.flat_dataPV,
                                                       u.unflatten_func_params.buf_sizeLu);
            break;
        case PF_Arbitrary_INTERP_FUNC:
            // The earlier keyframe's value, whatever the fraction: LUTs are not blended.
            *u.interp_func_params.interpPH = CopyArb(host, u.interp_func_params.left_arbH);
            break;
        case PF_Arbitrary_COMPARE_FUNC:
            *u.compare_func_params.compareP =
                compare(host, u.compare_func_params.a_arbH, u.compare_func_params.b_arbH);
            break;
        case PF_Arbitrary_PRINT_SIZE_FUNC:
            *u.print_size_func_params.print_sizePLu =
                static_cast<A_u_long>(textOf(host, u.print_size_func_params.arbH).size() + 1);
            break;
        case PF_Arbitrary_PRINT_FUNC:
            print(host, u.print_func_params.arbH, u.print_func_params.print_bufferPC,
                  u.print_func_params.print_sizeLu);
            break;
        case PF_Arbitrary_SCAN_FUNC:
            return scan(host, u.scan_func_params.bufPC, u.scan_func_params.bytes_to_scanLu,
                        u.scan_func_params.arbPH);
        default:
            break;
    }
    return PF_Err_NONE;
}

}  // namespace tw_effect
