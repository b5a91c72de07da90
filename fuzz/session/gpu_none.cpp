#include "fuzz/session/commands.h"

namespace session_fuzz {

void renderOnGpu(Stage&, Record&) {}

}  // namespace session_fuzz
