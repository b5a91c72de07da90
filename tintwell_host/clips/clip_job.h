// Clips, where the program was built with them.
#pragma once

#include <string>

#include "tintwell_host/jobs/render_options.h"
#include "tintwell_host/session/effect_session.h"

namespace program {

// Whether the name is that of a clip: .mov, .mp4, .m4v, .mkv, .mxf or .avi.
bool isClip(const std::string& path);

// Throws Failure for options that would do nothing, given what is read and written: clips' own
// where there are none, and others where there are clips.
void checkClipOptions(const RenderOptions& options);

// Grades a clip into a clip or a sequence, or a sequence into a clip, with options that were
// checked. Throws Failure, also in a program that was built without clips.
void renderClip(EffectSession& session, const RenderOptions& options);

}  // namespace program
