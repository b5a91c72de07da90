#include "effect/alert.h"

#include "native/src/paths.h"
#include "platform/mac/dialogs.h"

namespace tw_effect {

void Alert(const std::wstring& message, bool warning) {
    tw_mac::Alert(tw::toUtf8(message), warning);
}

}  // namespace tw_effect
