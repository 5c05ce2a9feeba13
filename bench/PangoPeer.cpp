#include "PangoPeer.h"

#include <memory>

#include <Common/Utf.h>
#include <pango/pangocairo.h>

namespace bench {

namespace {

struct Unreference {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T>
using ObjectPtr = std::unique_ptr<T, Unreference>;

struct FreeIterator {
    void operator()(PangoLayoutIter* iterator) const { pango_layout_iter_free(iterator); }
};

struct FreeDescription {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};

/// A context in which nothing is rounded to pixels.
ObjectPtr<PangoContext> makeContext(PangoFontMap* fonts) {
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fonts), 72);
    ObjectPtr<PangoContext> context(pango_font_map_create_context(fonts));
    pango_context_set_round_glyph_positions(context.get(), FALSE);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context.get(), options);
    cairo_font_options_destroy(options);
    return context;
}

void addGlyphs(PangoLayout* layout, Sums& sums) {
    const std::unique_ptr<PangoLayoutIter, FreeIterator> iterator(pango_layout_get_iter(layout));
    do {
        const PangoLayoutRun* const run = pango_layout_iter_get_run_readonly(iterator.get());
        if (run == nullptr) {
            continue;
        }
        PangoRectangle box;
        pango_layout_iter_get_run_extents(iterator.get(), nullptr, &box);
        int x = box.x;
        for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
            const PangoGlyphGeometry& geometry = run->glyphs->glyphs[i].geometry;
            sums.positions += static_cast<double>(x + geometry.x_offset) / PANGO_SCALE;
            x += geometry.width;
        }
        sums.glyphs += run->glyphs->num_glyphs;
    } while (pango_layout_iter_next_run(iterator.get()) != FALSE);
}

class Pango {
public:
    void ask(Question question, const std::string& paragraph, double wrapWidth, Sums& sums) const {
        const ObjectPtr<PangoLayout> layout(pango_layout_new(m_context.get()));
        pango_layout_set_font_description(layout.get(), m_font.get());
        if (wrapWidth > 0.0) {
            pango_layout_set_width(layout.get(), static_cast<int>(wrapWidth * PANGO_SCALE));
        }
        pango_layout_set_text(layout.get(), paragraph.data(), static_cast<int>(paragraph.size()));
        PangoRectangle ink{};
        PangoRectangle logical{};
        pango_layout_get_extents(layout.get(), question == Question::Ink ? &ink : nullptr, &logical);
        const PangoRectangle& box = question == Question::Ink ? ink : logical;
        sums.width += static_cast<double>(box.width) / PANGO_SCALE;
        sums.height += static_cast<double>(box.height) / PANGO_SCALE;
        if (question == Question::Glyphs) {
            addGlyphs(layout.get(), sums);
        }
    }

private:
    static PangoFontDescription* makeFont() {
        PangoFontDescription* const font = pango_font_description_new();
        pango_font_description_set_family(font, common::utf8FromWide(family).c_str());
        pango_font_description_set_absolute_size(font, emSize * PANGO_SCALE);
        return font;
    }

    ObjectPtr<PangoFontMap> m_fonts{pango_cairo_font_map_new()};
    ObjectPtr<PangoContext> m_context = makeContext(m_fonts.get());
    std::unique_ptr<PangoFontDescription, FreeDescription> m_font{makeFont()};
};

} // namespace

Peer pangoPeer() {
    return {"Pango",
            [pango = std::make_shared<Pango>()](Question question, const PeerText& paragraph, double wrapWidth,
                                                Sums& sums) { pango->ask(question, paragraph.utf8, wrapWidth, sums); }};
}

} // namespace bench
