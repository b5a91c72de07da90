// What the engine found, as JavaScript's own values: plain objects with the members that
// tintwell.mjs documents. Names that are no UTF-8 have their foreign bytes replaced.
#pragma once

#include <emscripten/val.h>

#include <string>

#include "desk/engine/look.h"
#include "desk/engine/look_finder.h"
#include "looks/check.h"
#include "looks/comparison.h"
#include "looks/edit_request_reader.h"
#include "looks/measure.h"

namespace desk {

std::string kindOf(const Look& look);
std::string idOf(const Look& look);
std::string nameOf(const Look& look);
int sizeOf(const Look& look);
int stepsOf(const Look& look);
emscripten::val rangeOf(const Look& look);

emscripten::val reportOf(const looks::Check& check);
emscripten::val reportOf(const looks::Measurement& measurement, bool isOf8Bits);
emscripten::val reportOf(const looks::Steps& steps);
emscripten::val reportOf(const looks::EditRequest& request);
emscripten::val reportOf(const LookFinder& finder);

}  // namespace desk
