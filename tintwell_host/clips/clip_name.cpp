#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/strutil.h>

#include <algorithm>

#include "tintwell_host/clips/clip_job.h"

namespace program {

bool isClip(const std::string& path) {
    static constexpr const char* kClips[] = {"mov", "mp4", "m4v", "mkv", "mxf", "avi"};
    const std::string extension = OIIO::Strutil::lower(OIIO::Filesystem::extension(path, false));
    return std::find(std::begin(kClips), std::end(kClips), extension) != std::end(kClips);
}

}  // namespace program
