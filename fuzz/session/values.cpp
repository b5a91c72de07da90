#include "fuzz/session/commands.h"
#include "fuzz/session/texts.h"
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

void create(Stage& stage, Record&) {
    stage.hold(stage.calls().create(), stage.reference.none());
}

void copy(Stage& stage, Record& record) {
    const Held source = stage.choose(record);
    stage.hold(stage.calls().copy(source.handle), stage.reference.copy(source.value));
}

void dispose(Stage& stage, Record& record) {
    Held value;
    if (!stage.held.empty()) {
        const auto at = stage.held.begin() + record.below(static_cast<int>(stage.held.size()));
        value = *at;
        stage.held.erase(at);
    }
    require(stage.calls().dispose(value.handle) == PF_Err_NONE, "DISPOSE gave an error");
}

void flatten(Stage& stage, Record& record) {
    const Held source = stage.choose(record);
    const std::size_t right = source.value ? source.value->size() : 0;
    const auto size = stage.calls().flatSize(source.handle);
    require(size.error == PF_Err_NONE && size.value == right, "FLAT_SIZE is wrong");

    const std::size_t given = bufferSize(record, right);
    const auto flat = stage.calls().flatten(source.handle, static_cast<A_u_long>(given));
    require(flat.error == PF_Err_NONE, "FLATTEN gave an error");
    require(flat.value == stage.reference.flatten(source.value, given), "FLATTEN wrote otherwise");

    const auto back = stage.calls().unflatten(flat.value);
    stage.hold(back, stage.reference.unflatten(flat.value));
}

void unflatten(Stage& stage, Record& record) {
    if (record.below(8) == 7) {
        stage.hold(stage.calls().unflattenNull(), stage.reference.unflatten(std::nullopt));
        return;
    }
    Applied* const into = record.flag() ? stage.chooseInstance(record) : nullptr;
    const Bytes bytes = makeBytes(record);
    const Value made = stage.reference.unflatten(bytes);
    if (into == nullptr) {
        stage.hold(stage.calls().unflatten(bytes), made);
        return;
    }
    require(into->instance->unflatten(kParamLut, bytes) == PF_Err_NONE, "UNFLATTEN gave an error");
    into->lut = made;
}

void interpolate(Stage& stage, Record& record) {
    const Held left = stage.choose(record);
    const Held right = stage.choose(record);
    const double at = record.number<double>();
    stage.hold(stage.calls().interpolate(left.handle, right.handle, at),
               stage.reference.copy(left.value));
}

void compare(Stage& stage, Record& record) {
    const Held a = stage.choose(record);
    const Held b = stage.choose(record);
    const auto answer = stage.calls().compare(a.handle, b.handle);
    require(answer.error == PF_Err_NONE, "COMPARE gave an error");
    require(answer.value == stage.reference.compare(a.value, b.value), "COMPARE errs");
}

void print(Stage& stage, Record& record) {
    const Held value = stage.choose(record);
    const auto size = stage.calls().printSize(value.handle);
    const std::size_t right = stage.reference.print(value.value).size() + 1;
    require(size.error == PF_Err_NONE && size.value == right, "PRINT_SIZE is wrong");

    const std::size_t given = bufferSize(record, right);
    const auto text = stage.calls().print(value.handle, static_cast<A_u_long>(given));
    require(text.error == PF_Err_NONE, "PRINT gave an error");
    require(text.value == printed(stage.reference.print(value.value), given),
            "PRINT wrote otherwise");
    stage.requireLine("Arb PRINT");
}

void scan(Stage& stage, Record& record) {
    Applied* const into = record.flag() ? stage.chooseInstance(record) : nullptr;
    const std::string text = makeText(record);
    const std::optional<Value> made = stage.reference.scan(text);
    const PF_Err wanted = made ? PF_Err_NONE : PF_Err_CANNOT_PARSE_KEYFRAME_TEXT;
    if (into != nullptr) {
        require(into->instance->scan(kParamLut, text) == wanted, "SCAN's error is wrong");
        if (made) into->lut = *made;
    } else {
        const auto answer = stage.calls().scan(text);
        require(answer.error == wanted, "SCAN's error is wrong");
        if (made) stage.hold(answer, *made);
    }
    stage.requireLine("Arb SCAN");
}

void unknownSelector(Stage& stage, Record& record) {
    PF_ArbParamsExtra extra = {};
    const int beyond = 11 + record.byte();
    extra.which_function = record.flag() ? -beyond : beyond;
    require(stage.calls().raw(extra) == PF_Err_NONE, "an unknown selector gave an error");
}

}  // namespace session_fuzz
