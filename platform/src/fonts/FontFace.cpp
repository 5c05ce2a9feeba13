#include "fonts/FontFace.h"

#include "fonts/FaceSource.h"
#include "fonts/FontMetrics.h"
#include "fonts/GlyphOutline.h"

#include <cmath>
#include <memory>

namespace platform {

namespace {

/// The tangent of 20 degrees, by which a simulated oblique leans.
constexpr float obliqueSlant = 0.36397023426620234F;

std::uint32_t nextId() {
    static std::atomic<std::uint32_t> next = 0;
    return next.fetch_add(1, std::memory_order_relaxed);
}

/// How much wider a simulated bold makes stems and advances.
int boldStrength(unsigned unitsPerEm) {
    return static_cast<int>(std::lround(unitsPerEm / 24.0));
}

/// The functions of a font whose glyphs with an advance advance further by a number of
/// units, the rest being its parent's. Combining marks stay without an advance.
hb_font_funcs_t* widerAdvances() {
    static hb_font_funcs_t* const functions = [] {
        hb_font_funcs_t* const made = hb_font_funcs_create();
        hb_font_funcs_set_glyph_h_advance_func(
            made,
            [](hb_font_t* font, void* strength, hb_codepoint_t glyph, void*) {
                const hb_position_t advance = hb_font_get_glyph_h_advance(hb_font_get_parent(font), glyph);
                return advance != 0 ? advance + *static_cast<const int*>(strength) : 0;
            },
            nullptr, nullptr);
        hb_font_funcs_make_immutable(made);
        return made;
    }();
    return functions;
}

HbFontPtr makeShapingFont(hb_font_t* drawingFont, DWRITE_FONT_SIMULATIONS simulations, int strength) {
    if ((simulations & DWRITE_FONT_SIMULATIONS_BOLD) == 0) {
        return HbFontPtr(hb_font_reference(drawingFont));
    }
    HbFontPtr font(hb_font_create_sub_font(drawingFont));
    auto data = std::make_unique<int>(strength);
    hb_font_set_funcs(font.get(), widerAdvances(), data.release(),
                      [](void* owned) { delete static_cast<int*>(owned); });
    hb_font_make_immutable(font.get());
    return font;
}

HbFontPtr makeDrawingFont(FaceSource& source, DWRITE_FONT_SIMULATIONS simulations) {
    HbFontPtr font = source.makeFont();
    if ((simulations & DWRITE_FONT_SIMULATIONS_OBLIQUE) != 0) {
        hb_font_set_synthetic_slant(font.get(), obliqueSlant);
    }
    hb_font_make_immutable(font.get());
    return font;
}

} // namespace

CFontFace::CFontFace(FaceSource& source, DWRITE_FONT_SIMULATIONS simulations, CommonLife* life)
    : CInternedObject(life), m_source(source), m_id(nextId()), m_simulations(simulations),
      m_drawingFont(makeDrawingFont(source, simulations)),
      m_glyphCount(hb_face_get_glyph_count(hb_font_get_face(m_drawingFont.get()))),
      m_metrics(readFontMetrics(m_drawingFont.get())), m_boldStrength(boldStrength(m_metrics.designUnitsPerEm)),
      m_hasPictures(hasPictures(hb_font_get_face(m_drawingFont.get()))),
      m_shapingFont(makeShapingFont(m_drawingFont.get(), simulations, m_boldStrength)), m_bounds(m_glyphCount) {}

CFontFace::~CFontFace() {
    for (const std::atomic<const GlyphPage*>& page : m_glyphPages) {
        delete page.load(std::memory_order_relaxed);
    }
}

std::uint16_t CFontFace::lookUpGlyph(char32_t codePoint) const {
    hb_codepoint_t glyph = 0;
    const bool found = hb_font_get_nominal_glyph(m_shapingFont.get(), codePoint, &glyph) != 0;
    return found && glyph < m_glyphCount ? static_cast<std::uint16_t>(glyph) : std::uint16_t{0};
}

const CFontFace::GlyphPage& CFontFace::fillGlyphPage(char32_t page) const {
    auto filled = std::make_unique<GlyphPage>();
    for (char32_t i = 0; i < filled->size(); ++i) {
        (*filled)[i] = lookUpGlyph(page * 256 + i);
    }
    const GlyphPage* other = nullptr;
    if (!m_glyphPages[page].compare_exchange_strong(other, filled.get(), std::memory_order_acq_rel,
                                                    std::memory_order_acquire)) {
        return *other;
    }
    return *filled.release();
}

int CFontFace::advance(std::uint16_t glyph) const {
    return glyph < m_glyphCount ? hb_font_get_glyph_h_advance(m_shapingFont.get(), glyph) : 0;
}

const GlyphBounds& CFontFace::glyphBounds(std::uint16_t glyph) const {
    static const GlyphBounds none;
    if (glyph >= m_glyphCount) {
        return none;
    }
    return m_bounds.get(glyph, [&] {
        OutlineBounds sink;
        outline(glyph, sink);
        return sink.bounds();
    });
}

void CFontFace::outline(std::uint16_t glyph, OutlineSink& sink) const {
    if (glyph >= m_glyphCount) {
        return;
    }
    const bool isFramed = m_hasPictures && playPictureFrame(m_drawingFont.get(), glyph, sink);
    if (!isFramed && (m_simulations & DWRITE_FONT_SIMULATIONS_BOLD) != 0) {
        playEmboldenedOutline(m_drawingFont.get(), glyph, static_cast<float>(m_boldStrength), sink);
    } else if (!isFramed) {
        playOutline(m_drawingFont.get(), glyph, sink);
    }
    if (m_source.isTorn()) {
        const bool isHosts = m_source.path().empty();
        throw StatusError(isHosts ? m_source.failure() : E_FAIL,
                          "the font file changed while it was in use: " + m_source.path());
    }
}

DWRITE_GLYPH_METRICS CFontFace::designGlyphMetrics(std::uint16_t glyph) const {
    DWRITE_GLYPH_METRICS metrics{};
    if (glyph >= m_glyphCount) {
        return metrics;
    }
    const GlyphBounds& bounds = glyphBounds(glyph);
    const auto low = [&](float value) { return bounds.empty() ? 0 : static_cast<INT32>(std::floor(value)); };
    const auto high = [&](float value) { return bounds.empty() ? 0 : static_cast<INT32>(std::ceil(value)); };
    hb_position_t originX = 0;
    hb_position_t originY = 0;
    hb_font_get_glyph_v_origin(m_shapingFont.get(), glyph, &originX, &originY);
    // Vertical advances go down and so are negative there.
    const INT32 advanceHeight = -hb_font_get_glyph_v_advance(m_shapingFont.get(), glyph);

    const INT32 advanceWidth = advance(glyph);
    metrics.advanceWidth = static_cast<UINT32>(advanceWidth);
    metrics.leftSideBearing = low(bounds.xMin);
    metrics.rightSideBearing = advanceWidth - high(bounds.xMax);
    metrics.advanceHeight = static_cast<UINT32>(advanceHeight);
    metrics.verticalOriginY = originY;
    metrics.topSideBearing = originY - high(bounds.yMax);
    metrics.bottomSideBearing = low(bounds.yMin) - (originY - advanceHeight);
    return metrics;
}

DWRITE_FONT_SIMULATIONS CFontFace::GetSimulations() {
    return m_simulations;
}

void CFontFace::GetMetrics(DWRITE_FONT_METRICS* fontFaceMetrics) {
    *fontFaceMetrics = m_metrics;
}

UINT16 CFontFace::GetGlyphCount() {
    return static_cast<UINT16>(m_glyphCount);
}

HRESULT CFontFace::GetDesignGlyphMetrics(const UINT16* glyphIndices, UINT32 glyphCount,
                                         DWRITE_GLYPH_METRICS* glyphMetrics, BOOL) {
    if (glyphIndices == nullptr || glyphMetrics == nullptr) {
        return E_INVALIDARG;
    }
    return guarded([&] {
        for (UINT32 i = 0; i < glyphCount; ++i) {
            glyphMetrics[i] = designGlyphMetrics(glyphIndices[i]);
        }
        return S_OK;
    });
}

HRESULT CFontFace::GetGlyphIndices(const UINT32* codePoints, UINT32 codePointCount, UINT16* glyphIndices) {
    if (codePoints == nullptr || glyphIndices == nullptr) {
        return E_INVALIDARG;
    }
    return guarded([&] {
        for (UINT32 i = 0; i < codePointCount; ++i) {
            glyphIndices[i] = nominalGlyph(codePoints[i]);
        }
        return S_OK;
    });
}

} // namespace platform
