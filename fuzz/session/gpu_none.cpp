#include "fuzz/session/steps.h"

namespace session_fuzz {

void renderOnGpu(SessionState&, Record&) {}

}  // namespace session_fuzz
