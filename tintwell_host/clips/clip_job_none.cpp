// The clips of a program that was built without them.
#include "tintwell_host/clips/clip_job.h"
#include "tintwell_host/files/failure.h"

namespace program {

void renderClip(EffectSession& /*session*/, const RenderOptions& /*options*/) {
    throw Failure("this program was built without clips: build with TINTWELL_CLIPS=ON");
}

}  // namespace program
