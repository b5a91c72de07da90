// A vector drawing. Letters are drawn as outlines, so that it looks the same everywhere.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tintwell_host/files/picture.h"

typedef struct _cairo_surface cairo_surface_t;
typedef struct _cairo cairo_t;

namespace program {

// 0xRRGGBB.
using Paint = std::uint32_t;

struct Point {
    double x = 0.0;
    double y = 0.0;
};

struct Box {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
};

struct TextStyle {
    double size = 16.0;
    Paint paint = 0xFFFFFF;
    bool bold = false;
};

// Lengths are pixels of the drawing, from its top left. Throws Failure when Cairo fails.
class Canvas {
public:
    Canvas(double width, double height, Paint background);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    // `at` is the left end of the base line.
    void text(Point at, std::string_view text, const TextStyle& style);
    double widthOf(std::string_view text, const TextStyle& style);
    // Broken at blanks into lines of `width` at most; returns how many.
    int wrapped(Point at, std::string_view text, const TextStyle& style, double width);

    void fill(const Box& box, Paint paint, double opacity = 1.0, double radius = 0.0);
    void circle(Point centre, double radius, Paint paint);
    void line(const std::vector<Point>& points, Paint paint, double width, double dash = 0.0,
              double opacity = 1.0);
    // The picture, fitted to the box, with rounded corners; kept as JPEG.
    void picture(const Box& box, const Picture& picture);

    // From here to the end of its life, nothing is drawn outside the box.
    class Clip {
    public:
        Clip(Canvas& canvas, const Box& box);
        ~Clip();
        Clip(const Clip&) = delete;
        Clip& operator=(const Clip&) = delete;

    private:
        Canvas& canvas_;
    };

    // The whole SVG file, with a title and a description for those who cannot see it. Once.
    std::string finish(const std::string& title, const std::string& description);

private:
    void use(const TextStyle& style);
    void colour(Paint paint, double opacity = 1.0);
    void path(const Box& box, double radius);

    std::string svg_;
    cairo_surface_t* surface_;
    cairo_t* cairo_;
};

}  // namespace program
