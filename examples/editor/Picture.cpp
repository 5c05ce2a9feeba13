#include "Picture.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include <cairo.h>

namespace {

constexpr double pixelsPerUnit = 6.0;
constexpr double margin = 3.0;

/// Hands outlines to cairo, whose matrix turns them over: there y points down.
class CairoPath : public fonts::IOutlineSink {
public:
    explicit CairoPath(cairo_t* cr) : m_cr(cr) {}

    void moveTo(MbCartPoint point) override { cairo_move_to(m_cr, point.x, point.y); }
    void lineTo(MbCartPoint point) override { cairo_line_to(m_cr, point.x, point.y); }
    void cubicTo(MbCartPoint control1, MbCartPoint control2, MbCartPoint end) override {
        cairo_curve_to(m_cr, control1.x, control1.y, control2.x, control2.y, end.x, end.y);
    }
    void close() override { cairo_close_path(m_cr); }

private:
    cairo_t* m_cr;
};

void fill(cairo_t* cr, const MbRect& rect) {
    cairo_rectangle(cr, rect.xmin, rect.ymin, rect.xmax - rect.xmin, rect.ymax - rect.ymin);
    cairo_fill(cr);
}

/// A bar with a flag at its top, which points the way that the text reads.
void drawCaret(cairo_t* cr, const fonts::SCaret& caret) {
    const double width = (caret.top - caret.bottom) / 20.0;
    const double flag = (caret.isRightToLeft ? -3.0 : 3.0) * width;
    fill(cr, {caret.x - width / 2.0, caret.bottom, caret.x + width / 2.0, caret.top});
    cairo_move_to(cr, caret.x, caret.top);
    cairo_line_to(cr, caret.x + flag, caret.top);
    cairo_line_to(cr, caret.x, caret.top - 3.0 * width);
    cairo_fill(cr);
}

void draw(cairo_t* cr, const Editor& editor) {
    cairo_set_source_rgb(cr, 1.0, 1.0, 1.0);
    cairo_paint(cr);
    cairo_set_source_rgb(cr, 0.7, 0.82, 1.0);
    for (const MbRect& rect : editor.selectionRects()) {
        fill(cr, rect);
    }
    cairo_set_source_rgb(cr, 0.1, 0.1, 0.1);
    CairoPath path(cr);
    editor.layout().outline(path);
    cairo_fill(cr);
    cairo_set_source_rgb(cr, 0.8, 0.0, 0.0);
    drawCaret(cr, editor.caret());
}

/// All that may be seen: the caret can stand beyond the text.
MbRect extent(const Editor& editor) {
    const fonts::SCaret caret = editor.caret();
    MbRect all = editor.layout().box();
    all |= editor.layout().ink();
    all |= MbRect(caret.x, caret.bottom, caret.x, caret.top);
    return {all.xmin - margin, all.ymin - margin, all.xmax + margin, all.ymax + margin};
}

} // namespace

void writePng(const Editor& editor, const std::string& file) {
    const MbRect seen = extent(editor);
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(pixelsPerUnit * (seen.xmax - seen.xmin)),
                                   static_cast<int>(pixelsPerUnit * (seen.ymax - seen.ymin))),
        cairo_surface_destroy);
    const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cr(cairo_create(surface.get()), cairo_destroy);
    cairo_scale(cr.get(), pixelsPerUnit, -pixelsPerUnit);
    cairo_translate(cr.get(), -seen.xmin, -seen.ymax);
    draw(cr.get(), editor);
    const cairo_status_t status = cairo_surface_write_to_png(surface.get(), file.c_str());
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(file + " cannot be written: " + cairo_status_to_string(status));
    }
}
