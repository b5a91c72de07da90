// What the module TintwellBundle exports for tests beside the effect's own entry points.
#pragma once

#include "macos_check/loader/appkit.h"

// The messages that the bundle sent to AppKit, and what is still open there.
extern "C" macho::AppKit* tintwell_bundle_appkit();
