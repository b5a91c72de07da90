#include "tintwell_host/sheets/curve_plot.h"

#include <algorithm>
#include <cmath>

#include "looks/facts.h"
#include "looks/words.h"
#include "tintwell_host/sheets/sheet_pictures.h"
#include "tintwell_host/sheets/sheet_style.h"

namespace program {
namespace {

constexpr int kGreys = 256;
constexpr double kWidths[3] = {6.5, 4.0, 1.8};

// Outputs further off than this are drawn at the edge: the curves would become flat otherwise.
constexpr float kFarthest = 1.0f;

class CurvePlot {
public:
    CurvePlot(Canvas& canvas, const Box& box, const std::vector<const tw::Lut3D*>& luts)
        : canvas_(canvas),
          luts_(luts),
          plot_{box.x + 46, box.y + 8, box.width - 100, box.height - 38} {
        for (const tw::Lut3D* lut : luts) {
            facts_.push_back(looks::factsOf(*lut));
            low_ = std::min(low_, std::max(facts_.back().lowest, -kFarthest));
            high_ = std::max(high_, std::min(facts_.back().highest, 1.0f + kFarthest));
        }
        if (low_ < 0.0f) low_ -= 0.03f;
        if (high_ > 1.0f) high_ += 0.03f;
    }

    void draw() {
        drawGround();
        for (std::size_t i = 0; i < luts_.size(); ++i) {
            const std::vector<looks::Colour> greys = looks::neutralAxis(*luts_[i], kGreys);
            for (std::size_t k = 0; k < 3; ++k)
                drawCurve(greys, k, facts_[i].channels[k], i == 0);
        }
        drawSpan();
        drawLegend();
    }

private:
    double x(float grey) const { return plot_.x + plot_.width * static_cast<double>(grey); }
    double y(float value) const {
        const float at = std::clamp((value - low_) / (high_ - low_), 0.0f, 1.0f);
        return plot_.y + plot_.height * (1.0 - static_cast<double>(at));
    }

    void drawGround() {
        canvas_.fill({plot_.x, y(high_), plot_.width, y(low_) - y(high_)}, style::kPanel, 1.0, 6.0);
        if (high_ > 1.0f) {
            canvas_.fill({plot_.x, y(high_), plot_.width, y(1.0f) - y(high_)}, kHighPaint, 0.13);
        }
        if (low_ < 0.0f) {
            canvas_.fill({plot_.x, y(0.0f), plot_.width, y(low_) - y(0.0f)}, kLowPaint, 0.13);
        }
        for (const float at : {0.0f, 0.25f, 0.5f, 0.75f, 1.0f}) {
            canvas_.line({{x(0), y(at)}, {x(1), y(at)}}, style::kFaint, 1.0, 0.0, 0.6);
            canvas_.line({{x(at), y(0)}, {x(at), y(1)}}, style::kFaint, 1.0, 0.0, 0.6);
            const std::string words = looks::spell(at);
            canvas_.text({plot_.x - 12 - canvas_.widthOf(words, style::kSmall), y(at) + 5}, words,
                         style::kSmall);
            canvas_.text(
                {x(at) - canvas_.widthOf(words, style::kSmall) / 2, plot_.y + plot_.height + 20},
                words, style::kSmall);
        }
        canvas_.line({{x(0), y(0)}, {x(1), y(1)}}, style::kQuiet, 1.5, 6.0);
    }

    void drawCurve(const std::vector<looks::Colour>& greys, std::size_t k,
                   const looks::ChannelFacts& facts, bool isFirst) {
        std::vector<Point> points;
        for (std::size_t i = 0; i < greys.size(); ++i)
            points.push_back({x(static_cast<float>(i) / (kGreys - 1)), y(greys[i][k])});
        const Paint paint = style::kChannels[k];
        if (!isFirst) {
            canvas_.line(points, paint, kWidths[k], 7.0);
            return;
        }
        canvas_.line(points, paint, kWidths[k]);
        drawFlatEnds(points, facts, paint);
        for (std::size_t i = 0; i < greys.size(); i += 8) {
            if (greys[i][k] < 0.0f || greys[i][k] > 1.0f) {
                canvas_.circle(points[i], 4.5, paint);
                canvas_.circle(points[i], 2.0, style::kPanel);
            }
        }
    }

    void drawFlatEnds(const std::vector<Point>& points, const looks::ChannelFacts& facts,
                      Paint paint) {
        const auto index = [](float grey) {
            return std::lround(static_cast<double>(grey) * (kGreys - 1));
        };
        const auto low = index(facts.flatUpTo);
        const auto high = index(facts.flatFrom);
        if (low > 1)
            canvas_.line({points.begin(), points.begin() + low + 1}, paint, 13.0, 0.0, 0.5);
        if (high < kGreys - 2 && high > low) {
            canvas_.line({points.begin() + high, points.end()}, paint, 13.0, 0.0, 0.5);
        }
    }

    // From the lowest to the highest value of the look.
    void drawSpan() {
        const double at = plot_.x + plot_.width + 14;
        const looks::Facts& facts = facts_.front();
        canvas_.line({{at, y(facts.lowest)}, {at, y(facts.highest)}}, style::kQuiet, 3.0);
        if (facts.lowest < 0.0f) canvas_.line({{at, y(facts.lowest)}, {at, y(0)}}, kLowPaint, 5.0);
        if (facts.highest > 1.0f) {
            canvas_.line({{at, y(facts.highest)}, {at, y(1)}}, kHighPaint, 5.0);
        }
        for (const float end : {facts.lowest, facts.highest}) {
            canvas_.line({{at - 5, y(end)}, {at + 5, y(end)}}, style::kText, 2.0);
            canvas_.text({at + 9, y(end) + 5}, looks::spell(end), style::kSmall);
        }
    }

    // At the corner that curves seldom reach.
    void drawLegend() {
        constexpr const char* kNames[3] = {"red", "green", "blue"};
        for (std::size_t k = 0; k < 3; ++k) {
            const double at = y(0) - 58 + 21 * static_cast<double>(k);
            canvas_.line({{x(1) - 94, at}, {x(1) - 64, at}}, style::kChannels[k], kWidths[k]);
            canvas_.text({x(1) - 54, at + 5}, kNames[k], style::kSmall);
        }
    }

    Canvas& canvas_;
    const std::vector<const tw::Lut3D*>& luts_;
    std::vector<looks::Facts> facts_;
    Box plot_;
    float low_ = 0.0f;
    float high_ = 1.0f;
};

}  // namespace

void drawCurves(Canvas& canvas, const Box& box, const std::vector<const tw::Lut3D*>& luts) {
    CurvePlot(canvas, box, luts).draw();
}

}  // namespace program
