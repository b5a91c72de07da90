#include "tintwell_host/sheets/sheet.h"

#include "looks/words.h"
#include "tintwell_host/sheets/curve_plot.h"
#include "tintwell_host/sheets/sheet_parts.h"
#include "tintwell_host/sheets/sheet_pictures.h"
#include "tintwell_host/sheets/sheet_style.h"

namespace program {
namespace {

constexpr double kHeight = 1290.0;

void drawAmounts(Canvas& canvas, const Picture& picture, const tw::Lut3D& lut, double top) {
    constexpr int kSteps = 5;
    constexpr double kGap = 14.0;
    const double width = (kInner - kGap * (kSteps - 1)) / kSteps;
    const Picture small = fitted(picture, 2 * static_cast<int>(width / 2), 162);
    canvas.text({kMargin, top - 10}, "Amount", style::kStrongCaption);
    for (int step = 0; step < kSteps; ++step) {
        const double left = kMargin + step * (width + kGap);
        const float amount = static_cast<float>(step) / (kSteps - 1);
        canvas.picture({left, top, width, 162}, graded(small, lut, amount));
        canvas.text({left, top + 182}, std::to_string(step * 25) + " %", style::kCaption);
    }
}

void drawClipMap(Canvas& canvas, const Box& box, const Picture& before, const Picture& after) {
    const ClipMap map = clipMapOf(before, after);
    canvas.text({box.x, box.y - 10}, "Where it clips", style::kStrongCaption);
    canvas.picture(box, map.picture);
    const auto percent = [](double share) {
        return looks::spell(static_cast<float>(share * 100.0)) + " %";
    };
    const double line = box.y + box.height + 20;
    canvas.circle({box.x + 6, line - 5}, 6, kHighPaint);
    canvas.text({box.x + 18, line}, "to white " + percent(map.high), style::kCaption);
    canvas.circle({box.x + 176, line - 5}, 6, kLowPaint);
    canvas.text({box.x + 188, line}, "to black " + percent(map.low), style::kCaption);
}

}  // namespace

std::string lookSheet(const looks::Check& look, const Picture& picture) {
    Canvas canvas(kSheetWidth, kHeight, style::kBackground);
    drawHead(canvas, nameOf(look.lut), describe(look));
    const Picture before = fitted(picture, 736, 414);
    const Picture after = graded(before, look.lut, 1.0f);
    drawPair(canvas, 160, {"Before", before}, {"After", after});
    drawAmounts(canvas, picture, look.lut, 630);
    constexpr double kThird = 880.0;
    canvas.text({kMargin, kThird - 10}, "Greys, from black to white", style::kStrongCaption);
    drawCurves(canvas, {kMargin, kThird, 560, 360}, {&look.lut});
    drawClipMap(canvas, {680, kThird, 400, 225}, before, after);
    drawFindings(canvas, {1130, kThird, kSheetWidth - kMargin - 1130, 360}, look.findings);
    return canvas.finish(nameOf(look.lut), inWords(look));
}

}  // namespace program
