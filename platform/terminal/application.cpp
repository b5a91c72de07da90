#include "platform/mac/application.h"

namespace tw_mac {

bool BecomeApplication() {
    return true;
}

}  // namespace tw_mac
