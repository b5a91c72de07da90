#include "fuzz/session/steps.h"

namespace session_fuzz {
namespace {

constexpr Step kSteps[] = {
    {'A', "apply", apply},
    {'B', "the LUT button", pressLutButton},
    {'C', "COPY", copy},
    {'D', "DISPOSE", dispose},
    {'E', "the Edit button", pressEditButton},
    {'F', "FLATTEN", flatten},
    {'G', "a GPU frame", renderOnGpu},
    {'H', "duplicate", duplicate},
    {'I', "INTERP", interpolate},
    {'J', "save and load", saveAndLoad},
    {'K', "COMPARE", compare},
    {'L', "the label", updateLabel},
    {'M', "Amount", setAmount},
    {'N', "NEW", create},
    {'O', "another command", otherCommand},
    {'P', "PRINT", print},
    {'Q', "a press of nothing", pressNothing},
    {'R', "RENDER", render},
    {'S', "SCAN", scan},
    {'T', "bytes from outside", setBytes},
    {'U', "UNFLATTEN", unflatten},
    {'V', "a null value", setNull},
    {'W', "an unknown selector", unknownSelector},
    {'X', "a refusal", refuse},
    {'Y', "remove", remove},
    {'Z', "lut-folder.txt", nameLutFolder},
};
constexpr int kCount = static_cast<int>(std::size(kSteps));

}  // namespace

const Step& stepOf(std::uint8_t byte) {
    const int place = (byte - 'A') % kCount;
    return kSteps[place < 0 ? place + kCount : place];
}

}  // namespace session_fuzz
