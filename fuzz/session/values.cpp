#include "fuzz/session/random_texts.h"
#include "fuzz/session/steps.h"
#include "fuzz/session/violation.h"

namespace session_fuzz {
namespace {

// Sizes of buffers that do not fit, besides one that does.
std::size_t bufferSize(Record& record, std::size_t right) {
    const int step = record.byte();
    const std::size_t few = static_cast<std::size_t>(step / 4);
    switch (step % 4) {
        case 1:
            return right + few;
        case 2:
            return right > few ? right - few : 0;
        case 3:
            return few;
        default:
            return right;
    }
}

// What print() shows of a text in a buffer of `size` bytes.
std::string printed(const std::string& text, std::size_t size) {
    return size == 0 ? "" : text.substr(0, size - 1).c_str();
}

}  // namespace

void create(SessionState& session, Record&) {
    session.hold(session.calls().create(), session.reference.none());
}

void copy(SessionState& session, Record& record) {
    const Held source = session.choose(record);
    session.hold(session.calls().copy(source.handle), session.reference.copy(source.value));
}

void dispose(SessionState& session, Record& record) {
    Held value;
    if (!session.held.empty()) {
        const auto at = session.held.begin() + record.below(static_cast<int>(session.held.size()));
        value = *at;
        session.held.erase(at);
    }
    require(session.calls().dispose(value.handle) == PF_Err_NONE, "DISPOSE gave an error");
}

void flatten(SessionState& session, Record& record) {
    const Held source = session.choose(record);
    const std::size_t right = source.value ? source.value->size() : 0;
    const auto size = session.calls().flatSize(source.handle);
    require(size.error == PF_Err_NONE && size.value == right, "FLAT_SIZE is wrong");

    const std::size_t given = bufferSize(record, right);
    const auto flat = session.calls().flatten(source.handle, static_cast<A_u_long>(given));
    require(flat.error == PF_Err_NONE, "FLATTEN gave an error");
    require(flat.value == session.reference.flatten(source.value, given),
            "FLATTEN wrote otherwise");

    const auto back = session.calls().unflatten(flat.value);
    session.hold(back, session.reference.unflatten(flat.value));
}

void unflatten(SessionState& session, Record& record) {
    if (record.below(8) == 7) {
        session.hold(session.calls().unflattenNull(), session.reference.unflatten(std::nullopt));
        return;
    }
    Applied* const into = record.flag() ? session.chooseInstance(record) : nullptr;
    const Bytes bytes = makeBytes(record);
    const Value made = session.reference.unflatten(bytes);
    if (into == nullptr) {
        session.hold(session.calls().unflatten(bytes), made);
        return;
    }
    require(into->instance->unflatten(kParamLut, bytes) == PF_Err_NONE, "UNFLATTEN gave an error");
    into->lut = made;
}

void interpolate(SessionState& session, Record& record) {
    const Held left = session.choose(record);
    const Held right = session.choose(record);
    const double at = record.number<double>();
    session.hold(session.calls().interpolate(left.handle, right.handle, at),
                 session.reference.copy(left.value));
}

void compare(SessionState& session, Record& record) {
    const Held a = session.choose(record);
    const Held b = session.choose(record);
    const auto answer = session.calls().compare(a.handle, b.handle);
    require(answer.error == PF_Err_NONE, "COMPARE gave an error");
    require(answer.value == session.reference.compare(a.value, b.value), "COMPARE errs");
}

void print(SessionState& session, Record& record) {
    const Held value = session.choose(record);
    const auto size = session.calls().printSize(value.handle);
    const std::size_t right = session.reference.print(value.value).size() + 1;
    require(size.error == PF_Err_NONE && size.value == right, "PRINT_SIZE is wrong");

    const std::size_t given = bufferSize(record, right);
    const auto text = session.calls().print(value.handle, static_cast<A_u_long>(given));
    require(text.error == PF_Err_NONE, "PRINT gave an error");
    require(text.value == printed(session.reference.print(value.value), given),
            "PRINT wrote otherwise");
    session.requireLine("Arb PRINT");
}

void scan(SessionState& session, Record& record) {
    Applied* const into = record.flag() ? session.chooseInstance(record) : nullptr;
    const std::string text = makeText(record);
    const std::optional<Value> made = session.reference.scan(text);
    const PF_Err wanted = made ? PF_Err_NONE : PF_Err_CANNOT_PARSE_KEYFRAME_TEXT;
    if (into != nullptr) {
        require(into->instance->scan(kParamLut, text) == wanted, "SCAN's error is wrong");
        if (made) into->lut = *made;
    } else {
        const auto answer = session.calls().scan(text);
        require(answer.error == wanted, "SCAN's error is wrong");
        if (made) session.hold(answer, *made);
    }
    session.requireLine("Arb SCAN");
}

void unknownSelector(SessionState& session, Record& record) {
    PF_ArbParamsExtra extra = {};
    const int beyond = 11 + record.byte();
    extra.which_function = record.flag() ? -beyond : beyond;
    require(session.calls().raw(extra) == PF_Err_NONE, "an unknown selector gave an error");
}

}  // namespace session_fuzz
