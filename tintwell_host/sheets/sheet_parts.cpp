#include "tintwell_host/sheets/sheet_parts.h"

#include "looks/words.h"
#include "tintwell_host/look_files/table.h"
#include "tintwell_host/sheets/sheet_pictures.h"
#include "tintwell_host/sheets/sheet_style.h"

namespace program {
namespace {

std::string capitalised(std::string words) {
    if (!words.empty() && words[0] >= 'a' && words[0] <= 'z') words[0] -= 'a' - 'A';
    return words;
}

}  // namespace

std::string nameOf(const tw::Lut3D& lut) {
    return lut.name.empty() ? "A look without a name" : plain(lut.name);
}

std::string describe(const looks::Check& look) {
    std::string line = std::to_string(look.lut.size) + " points an axis";
    if (look.lut.id != 0) line += "   ·   match " + std::to_string(look.lut.id);
    return line + "   ·   values " + looks::spell(look.facts->lowest) + " to " +
           looks::spell(look.facts->highest);
}

std::string inWords(const looks::Check& look) {
    std::string words = describe(look) + ".";
    for (const looks::Finding& finding : look.findings)
        words += " " + capitalised(plain(finding.words)) + ".";
    return words;
}

void drawHead(Canvas& canvas, const std::string& title, const std::string& subtitle) {
    TextStyle name = style::kTitle;
    while (name.size > 20.0 && canvas.widthOf(title, name) > kInner)
        name.size -= 2.0;
    canvas.text({kMargin, 78}, title, name);
    canvas.text({kMargin, 110}, subtitle, style::kSubtitle);
}

void drawPair(Canvas& canvas, double top, const Captioned& left, const Captioned& right) {
    constexpr double kWidth = 736.0;
    constexpr double kTall = 414.0;
    const double second = kSheetWidth - kMargin - kWidth;
    canvas.text({kMargin, top - 10}, left.caption, style::kStrongCaption);
    canvas.text({second, top - 10}, right.caption, style::kStrongCaption);
    canvas.picture({kMargin, top, kWidth, kTall}, left.picture);
    canvas.picture({second, top, kWidth, kTall}, right.picture);
}

void drawFindings(Canvas& canvas, const Box& box, const std::vector<looks::Finding>& findings) {
    canvas.text({box.x, box.y - 10}, "Worth knowing", style::kStrongCaption);
    double line = box.y + 16;
    std::size_t drawn = 0;
    for (const looks::Finding& finding : findings) {
        if (line > box.y + box.height - 40) break;
        const bool isTrap = finding.weight != looks::Weight::kNote;
        canvas.circle({box.x + 5, line - 5}, 4, isTrap ? kHighPaint : style::kQuiet);
        line += 21.6 * canvas.wrapped({box.x + 20, line}, capitalised(plain(finding.words)),
                                      style::kBody, box.width - 20);
        if (!finding.advice.empty() && isTrap) {
            line += 18.2 * canvas.wrapped({box.x + 20, line}, finding.advice, style::kSmall,
                                          box.width - 20);
        }
        line += 9;
        ++drawn;
    }
    if (findings.empty()) {
        canvas.wrapped({box.x, line}, "Nothing: neutral, monotonic and within 0..1.", style::kBody,
                       box.width);
    }
    if (drawn < findings.size()) {
        canvas.text({box.x + 20, line},
                    "and " + std::to_string(findings.size() - drawn) + " more: see check",
                    style::kSmall);
    }
}

}  // namespace program
