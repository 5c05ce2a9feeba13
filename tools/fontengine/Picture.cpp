#include "Picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include <cairo-svg.h>
#include <cairo.h>

#include "InputError.h"
#include "OutputFile.h"

namespace tool {

namespace {

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

constexpr double margin = 24.0;

MbCartPoint toDrawing(const LaidOutText& text, double x, double y) {
    const dxf::Point point = text.toDrawing.apply({x, y, 0.0});
    return {point.x, point.y};
}

std::array<MbCartPoint, 4> cornersOf(const LaidOutText& text, const MbRect& rect) {
    return {toDrawing(text, rect.xmin, rect.ymin), toDrawing(text, rect.xmax, rect.ymin),
            toDrawing(text, rect.xmax, rect.ymax), toDrawing(text, rect.xmin, rect.ymax)};
}

// Maps the drawing (y up) into the picture (y down).
class Viewport {
public:
    Viewport(const MbRect& extent, const PictureOptions& options) : m_extent(extent) {
        const double width = m_extent.xmax - m_extent.xmin;
        const double height = m_extent.ymax - m_extent.ymin;
        const double longer = std::max({width, height, 1e-9});
        m_scale = (options.longerSide - 2.0 * margin) / longer;
        m_width = std::ceil(width * m_scale + 2.0 * margin);
        m_height = std::ceil(height * m_scale + 2.0 * margin);
    }

    double width() const { return m_width; }
    double height() const { return m_height; }

    MbCartPoint operator()(const MbCartPoint& point) const {
        return {margin + (point.x - m_extent.xmin) * m_scale, margin + (m_extent.ymax - point.y) * m_scale};
    }

private:
    MbRect m_extent;
    double m_scale = 1.0;
    double m_width = 0.0;
    double m_height = 0.0;
};

void setColor(cairo_t* cr, std::uint32_t argb) {
    const auto channel = [argb](unsigned shift) { return static_cast<double>((argb >> shift) & 0xFFU) / 255.0; };
    cairo_set_source_rgba(cr, channel(16), channel(8), channel(0), channel(24));
}

// Draws outlines of a paragraph's layout as a path.
class PathSink final : public fonts::IOutlineSink {
public:
    PathSink(cairo_t* cr, const Viewport& viewport, const LaidOutText& text, const LaidOutParagraph& paragraph)
        : m_cr(cr), m_viewport(viewport), m_text(text), m_paragraph(paragraph) {}

    void moveTo(MbCartPoint point) override {
        const MbCartPoint p = place(point);
        cairo_move_to(m_cr, p.x, p.y);
    }
    void lineTo(MbCartPoint point) override {
        const MbCartPoint p = place(point);
        cairo_line_to(m_cr, p.x, p.y);
    }
    void cubicTo(MbCartPoint control1, MbCartPoint control2, MbCartPoint end) override {
        const MbCartPoint a = place(control1);
        const MbCartPoint b = place(control2);
        const MbCartPoint c = place(end);
        cairo_curve_to(m_cr, a.x, a.y, b.x, b.y, c.x, c.y);
    }
    void close() override { cairo_close_path(m_cr); }

private:
    MbCartPoint place(const MbCartPoint& point) const {
        const MbCartPoint inText = m_paragraph.toText(point);
        return m_viewport(toDrawing(m_text, inText.x, inText.y));
    }

    cairo_t* m_cr;
    const Viewport& m_viewport;
    const LaidOutText& m_text;
    const LaidOutParagraph& m_paragraph;
};

void fill(cairo_t* cr, std::uint32_t argb) {
    setColor(cr, argb);
    cairo_fill(cr);
}

// Glyph by glyph, so that what overlaps is filled.
void fillGlyphs(cairo_t* cr, const Viewport& viewport, const LaidOutText& text, const LaidOutParagraph& paragraph) {
    PathSink sink(cr, viewport, text, paragraph);
    for (const fonts::SRun& run : paragraph.layout.runs()) {
        for (const fonts::SGlyph& glyph : paragraph.layout.glyphs(run)) {
            if (glyph.hasInk) {
                paragraph.layout.outline(run, glyph, sink);
                fill(cr, paragraph.colors.at(run.token));
            }
        }
    }
}

void fillBars(cairo_t* cr, const Viewport& viewport, const LaidOutText& text, const LaidOutParagraph& paragraph) {
    for (const fonts::SBar& bar : paragraph.layout.bars()) {
        const std::array<MbCartPoint, 4> corners = cornersOf(text, paragraph.toText(bar.rect));
        for (auto corner = corners.rbegin(); corner != corners.rend(); ++corner) {
            const MbCartPoint p = viewport(*corner);
            cairo_line_to(cr, p.x, p.y);
        }
        cairo_close_path(cr);
        fill(cr, paragraph.colors.at(bar.token));
    }
}

void strokeRect(cairo_t* cr, const Viewport& viewport, const LaidOutText& text, const MbRect& rect) {
    if (rect.isEmpty()) {
        return;
    }
    for (const MbCartPoint& corner : cornersOf(text, rect)) {
        const MbCartPoint p = viewport(corner);
        cairo_line_to(cr, p.x, p.y);
    }
    cairo_close_path(cr);
    cairo_stroke(cr);
}

// Clusters violet with a dot at the corner where their text is inserted, bars of
// underlines orange.
void strokeClusters(cairo_t* cr, const Viewport& viewport, const LaidOutText& text) {
    constexpr double dot = 1.6;
    cairo_set_line_width(cr, 0.6);
    for (const LaidOutParagraph& paragraph : text.paragraphs) {
        for (const LaidOutCluster& cluster : paragraph.clusters) {
            if (cluster.rect.isEmpty()) {
                continue;
            }
            cairo_set_source_rgba(cr, 0.55, 0.1, 0.75, 0.7);
            strokeRect(cr, viewport, text, cluster.rect);
            const MbCartPoint corner = viewport(toDrawing(text, cluster.rect.xmin, cluster.rect.ymax));
            cairo_arc(cr, corner.x, corner.y, dot, 0.0, 2.0 * std::numbers::pi);
            cairo_fill(cr);
        }
        cairo_set_source_rgba(cr, 1.0, 0.5, 0.0, 0.9);
        for (const MbRect& underline : paragraph.underlines) {
            strokeRect(cr, viewport, text, underline);
        }
    }
}

void strokeBoxes(cairo_t* cr, const Viewport& viewport, const LaidOutText& text) {
    cairo_set_line_width(cr, 0.8);
    for (const LaidOutParagraph& paragraph : text.paragraphs) {
        cairo_set_source_rgba(cr, 0.1, 0.3, 0.9, 0.8);
        strokeRect(cr, viewport, text, paragraph.box);
        cairo_set_source_rgba(cr, 0.9, 0.1, 0.1, 0.8);
        strokeRect(cr, viewport, text, paragraph.ink);
        cairo_set_source_rgba(cr, 0.0, 0.6, 0.2, 0.8);
        if (paragraph.box.isEmpty()) {
            continue; // no baseline is as long as what has no edges
        }
        for (const double y : paragraph.baselines()) {
            const MbCartPoint a = viewport(toDrawing(text, paragraph.box.xmin, y));
            const MbCartPoint b = viewport(toDrawing(text, paragraph.box.xmax, y));
            cairo_move_to(cr, a.x, a.y);
            cairo_line_to(cr, b.x, b.y);
            cairo_stroke(cr);
        }
    }
}

cairo_status_t writeTo(void* stream, const unsigned char* bytes, unsigned count) {
    auto& output = *static_cast<std::ostream*>(stream);
    output.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(count));
    return output ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

void requireDrawn(cairo_status_t status, const std::string& path) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw InputError(outputName(path) + ": cannot be drawn: " + std::string(cairo_status_to_string(status)) +
                             "; leave texts of extreme size or place out of the drawing",
                         ExitCode::Failure);
    }
}

// The output file knows better why it could not be written.
void requireWritten(cairo_status_t status, const std::string& path) {
    if (status != CAIRO_STATUS_WRITE_ERROR) {
        requireDrawn(status, path);
    }
}

Surface createSurface(PictureFormat format, std::ostream& output, const Viewport& viewport) {
    if (format == PictureFormat::Svg) {
        return {cairo_svg_surface_create_for_stream(&writeTo, &output, viewport.width(), viewport.height()),
                &cairo_surface_destroy};
    }
    return {cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(viewport.width()),
                                       static_cast<int>(viewport.height())),
            &cairo_surface_destroy};
}

} // namespace

void PictureExtent::include(const LaidOutText& text) {
    for (const MbRect& rect : {text.box, text.ink}) {
        if (rect.isEmpty()) {
            continue;
        }
        for (const MbCartPoint& corner : cornersOf(text, rect)) {
            m_rect.IncludeX(corner.x);
            m_rect.IncludeY(corner.y);
        }
    }
}

MbRect PictureExtent::rect() const {
    return m_rect.isEmpty() ? MbRect(0.0, 0.0, 1.0, 1.0) : m_rect;
}

struct Picture::Canvas {
    Canvas(PictureFormat aFormat, const std::string& aPath, const MbRect& extent, const PictureOptions& aOptions)
        : format(aFormat), path(aPath), options(aOptions), viewport(extent, aOptions), file(aPath),
          surface(createSurface(aFormat, file.stream(), viewport)), cr(nullptr, &cairo_destroy) {
        requireDrawn(cairo_surface_status(surface.get()), path);
        cr.reset(cairo_create(surface.get()));
    }

    PictureFormat format;
    std::string path;
    PictureOptions options;
    Viewport viewport;
    OutputFile file; // outlives the surface, which may write until its end
    Surface surface;
    Context cr;
};

Picture::Picture(PictureFormat format, const std::string& path, const PictureExtent& extent,
                 const PictureOptions& options)
    : m_canvas(std::make_unique<Canvas>(format, path, extent.rect(), options)) {
    cairo_set_source_rgb(m_canvas->cr.get(), 1.0, 1.0, 1.0);
    cairo_paint(m_canvas->cr.get());
}

Picture::~Picture() = default;
Picture::Picture(Picture&&) noexcept = default;

void Picture::draw(const LaidOutText& text) {
    cairo_t* cr = m_canvas->cr.get();
    for (const LaidOutParagraph& paragraph : text.paragraphs) {
        fillGlyphs(cr, m_canvas->viewport, text, paragraph);
        fillBars(cr, m_canvas->viewport, text, paragraph);
    }
    strokeClusters(cr, m_canvas->viewport, text);
    if (m_canvas->options.boxes) {
        strokeBoxes(cr, m_canvas->viewport, text);
    }
}

void Picture::finish() {
    cairo_surface_t* surface = m_canvas->surface.get();
    requireDrawn(cairo_status(m_canvas->cr.get()), m_canvas->path);
    m_canvas->cr.reset();
    if (m_canvas->format == PictureFormat::Png) {
        requireWritten(cairo_surface_write_to_png_stream(surface, &writeTo, &m_canvas->file.stream()), m_canvas->path);
    } else {
        cairo_surface_finish(surface);
        requireWritten(cairo_surface_status(surface), m_canvas->path);
    }
    m_canvas->file.commit();
}

} // namespace tool
