// What both kinds of sheet are made of.
#pragma once

#include <string>
#include <vector>

#include "looks/check.h"
#include "tintwell_host/files/picture.h"
#include "tintwell_host/sheets/canvas.h"

namespace program {

inline constexpr double kSheetWidth = 1600.0;
inline constexpr double kMargin = 56.0;
inline constexpr double kInner = kSheetWidth - 2 * kMargin;

struct Captioned {
    std::string caption;
    const Picture& picture;
};

// The look's own name, or what stands for it.
std::string nameOf(const tw::Lut3D& lut);
// Match, size and range in one line.
std::string describe(const looks::Check& look);
// All of it in sentences, for those who cannot see the sheet.
std::string inWords(const looks::Check& look);

void drawHead(Canvas& canvas, const std::string& title, const std::string& subtitle);
// Two pictures side by side over the whole width, of 736 x 414 each.
void drawPair(Canvas& canvas, double top, const Captioned& left, const Captioned& right);
// As many findings as there is room for, and how many there were besides.
void drawFindings(Canvas& canvas, const Box& box, const std::vector<looks::Finding>& findings);

}  // namespace program
