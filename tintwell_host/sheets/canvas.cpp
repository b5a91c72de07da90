#include "tintwell_host/sheets/canvas.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <cmath>
#include <numbers>

#include "tintwell_host/files/failure.h"

namespace program {
namespace {

cairo_status_t append(void* svg, const unsigned char* bytes, unsigned count) {
    static_cast<std::string*>(svg)->append(reinterpret_cast<const char*>(bytes), count);
    return CAIRO_STATUS_SUCCESS;
}

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '&') {
            out += "&amp;";
        } else if (c == '<') {
            out += "&lt;";
        } else {
            out += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return out;
}

}  // namespace

Canvas::Canvas(double width, double height, Paint background)
    : surface_(cairo_svg_surface_create_for_stream(&append, &svg_, width, height)),
      cairo_(cairo_create(surface_)) {
    cairo_svg_surface_set_document_unit(surface_, CAIRO_SVG_UNIT_PX);
    colour(background);
    cairo_paint(cairo_);
    cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
}

Canvas::~Canvas() {
    cairo_destroy(cairo_);
    cairo_surface_destroy(surface_);
}

void Canvas::colour(Paint paint, double opacity) {
    cairo_set_source_rgba(cairo_, (paint >> 16 & 0xFF) / 255.0, (paint >> 8 & 0xFF) / 255.0,
                          (paint & 0xFF) / 255.0, opacity);
}

void Canvas::use(const TextStyle& style) {
    cairo_select_font_face(cairo_, "Inter", CAIRO_FONT_SLANT_NORMAL,
                           style.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(cairo_, style.size);
}

void Canvas::text(Point at, std::string_view text, const TextStyle& style) {
    use(style);
    colour(style.paint);
    cairo_move_to(cairo_, at.x, at.y);
    cairo_show_text(cairo_, std::string(text).c_str());
}

double Canvas::widthOf(std::string_view text, const TextStyle& style) {
    use(style);
    cairo_text_extents_t extents;
    cairo_text_extents(cairo_, std::string(text).c_str(), &extents);
    return extents.x_advance;
}

int Canvas::wrapped(Point at, std::string_view text, const TextStyle& style, double width) {
    int lines = 0;
    while (!text.empty()) {
        std::size_t end = text.size();
        while (widthOf(text.substr(0, end), style) > width) {
            const std::size_t blank = text.rfind(' ', end - 1);
            if (blank == std::string_view::npos || blank == 0) break;
            end = blank;
        }
        this->text({at.x, at.y + lines * style.size * 1.35}, text.substr(0, end), style);
        text.remove_prefix(std::min(text.size(), end + 1));
        ++lines;
    }
    return lines;
}

void Canvas::path(const Box& box, double radius) {
    cairo_new_path(cairo_);
    if (radius == 0.0) {
        cairo_rectangle(cairo_, box.x, box.y, box.width, box.height);
        return;
    }
    const double right = box.x + box.width - radius;
    const double bottom = box.y + box.height - radius;
    const double quarter = std::numbers::pi / 2;
    cairo_new_sub_path(cairo_);
    cairo_arc(cairo_, right, box.y + radius, radius, -quarter, 0);
    cairo_arc(cairo_, right, bottom, radius, 0, quarter);
    cairo_arc(cairo_, box.x + radius, bottom, radius, quarter, 2 * quarter);
    cairo_arc(cairo_, box.x + radius, box.y + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(cairo_);
}

void Canvas::fill(const Box& box, Paint paint, double opacity, double radius) {
    colour(paint, opacity);
    path(box, radius);
    cairo_fill(cairo_);
}

void Canvas::circle(Point centre, double radius, Paint paint) {
    colour(paint);
    cairo_new_path(cairo_);
    cairo_arc(cairo_, centre.x, centre.y, radius, 0, 2 * std::numbers::pi);
    cairo_fill(cairo_);
}

void Canvas::line(const std::vector<Point>& points, Paint paint, double width, double dash,
                  double opacity) {
    colour(paint, opacity);
    cairo_set_line_width(cairo_, width);
    cairo_set_dash(cairo_, &dash, dash > 0.0 ? 1 : 0, 0.0);
    // Text leaves a point behind that the line would begin at.
    cairo_new_path(cairo_);
    for (const Point& point : points)
        cairo_line_to(cairo_, point.x, point.y);
    cairo_stroke(cairo_);
}

void Canvas::picture(const Box& box, const Picture& picture) {
    auto* jpeg = new std::string(encodePicture("sheet.jpg", picture, {}));
    cairo_surface_t* image =
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, picture.width, picture.height);
    cairo_surface_set_mime_data(
        image, CAIRO_MIME_TYPE_JPEG, reinterpret_cast<const unsigned char*>(jpeg->data()),
        jpeg->size(), [](void* data) { delete static_cast<std::string*>(data); }, jpeg);
    cairo_save(cairo_);
    path(box, 6.0);
    cairo_clip(cairo_);
    cairo_translate(cairo_, box.x, box.y);
    cairo_scale(cairo_, box.width / picture.width, box.height / picture.height);
    cairo_set_source_surface(cairo_, image, 0, 0);
    cairo_paint(cairo_);
    cairo_restore(cairo_);
    cairo_surface_destroy(image);
}

Canvas::Clip::Clip(Canvas& canvas, const Box& box) : canvas_(canvas) {
    cairo_save(canvas_.cairo_);
    canvas_.path(box, 0.0);
    cairo_clip(canvas_.cairo_);
}

Canvas::Clip::~Clip() {
    cairo_restore(canvas_.cairo_);
}

std::string Canvas::finish(const std::string& title, const std::string& description) {
    cairo_surface_finish(surface_);
    const cairo_status_t status = cairo_surface_status(surface_);
    if (status != CAIRO_STATUS_SUCCESS || cairo_status(cairo_) > CAIRO_STATUS_SURFACE_FINISHED) {
        throw Failure(std::string("cannot draw: ") + cairo_status_to_string(status));
    }
    const std::size_t inside = svg_.find('>', svg_.find("<svg")) + 1;
    return svg_.insert(inside, "\n<title>" + escaped(title) + "</title>\n<desc>" +
                                   escaped(description) + "</desc>");
}

}  // namespace program
