// The part of the hosts' effect interface that this system uses. Type, field and constant names are
// the published ones, so that sources written against these headers also compile against the hosts'
// own. Effect-side records are laid out with natural alignment on every system, Premiere Pro's own
// (Pr*, pi*, PPix) without any padding; size and alignment are asserted beside each declaration,
// offsets by tests/host_api.
#pragma once

#include "host_api/arbitrary_data.h"
#include "host_api/basic_suite.h"
#include "host_api/commands.h"
#include "host_api/errors.h"
#include "host_api/gpu_device_suite.h"
#include "host_api/gpu_filter.h"
#include "host_api/gpu_image_processing_suite.h"
#include "host_api/in_data.h"
#include "host_api/interaction_callbacks.h"
#include "host_api/memory_manager_suite.h"
#include "host_api/out_data.h"
#include "host_api/param_utils_suite.h"
#include "host_api/parameters.h"
#include "host_api/pixel_format_suite.h"
#include "host_api/pixel_formats.h"
#include "host_api/ppix_suites.h"
#include "host_api/premiere_param.h"
#include "host_api/premiere_suites.h"
#include "host_api/premiere_types.h"
#include "host_api/registration.h"
#include "host_api/sound.h"
#include "host_api/transition_suite.h"
#include "host_api/types.h"
#include "host_api/utility_callbacks.h"
#include "host_api/video_segment_suite.h"
#include "host_api/world.h"
