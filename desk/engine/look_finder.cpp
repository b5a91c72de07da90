#include "desk/engine/look_finder.h"

namespace desk {

LookFinder::LookFinder()
    : list_([this](const tw::Lut3D&, const std::string& text) { texts_.push_back(text); }),
      finder_([this](looks::FoundText&& text) {
          if (list_.add(text, places_.size()))
              places_.push_back({text.offset, text.base64, text.wide});
      }) {}

}  // namespace desk
