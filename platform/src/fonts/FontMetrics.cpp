#include "fonts/FontMetrics.h"

#include "fonts/GlyphOutline.h"
#include "fonts/SfntTables.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace platform {

namespace {

UINT16 toUnsigned(long value) {
    return static_cast<UINT16>(std::clamp(value, 0L, 0xFFFFL));
}

INT16 toSigned(long value) {
    return static_cast<INT16>(std::clamp(value, -0x8000L, 0x7FFFL));
}

/// A table's value moved by what the font's variations add to it.
long varied(hb_font_t* font, long value, hb_ot_metrics_tag_t tag) {
    return value + std::lround(hb_ot_metrics_get_variation(font, tag));
}

/// The top of a letter's outline; 0 when the font lacks the letter or its outline.
long topOf(hb_font_t* font, hb_codepoint_t letter) {
    hb_codepoint_t glyph = 0;
    if (!hb_font_get_nominal_glyph(font, letter, &glyph)) {
        return 0;
    }
    const GlyphBounds bounds = outlineBounds(font, glyph);
    return bounds.empty() ? 0 : std::lround(bounds.yMax);
}

/// What the font states, else what its letter measures, else a customary share of the em.
UINT16 letterHeight(long stated, hb_font_t* font, hb_codepoint_t letter, double share, unsigned unitsPerEm) {
    const long measured = stated > 0 ? stated : topOf(font, letter);
    return toUnsigned(measured > 0 ? measured : std::lround(share * unitsPerEm));
}

void readVerticalExtents(hb_font_t* font, const Os2Table* os2, const HheaTable* hhea, DWRITE_FONT_METRICS& metrics) {
    if (os2 != nullptr && (os2->selection & Os2Table::selectionUseTypoMetrics) != 0) {
        metrics.ascent = toUnsigned(varied(font, os2->typoAscender, HB_OT_METRICS_TAG_HORIZONTAL_ASCENDER));
        metrics.descent = toUnsigned(-varied(font, os2->typoDescender, HB_OT_METRICS_TAG_HORIZONTAL_DESCENDER));
        metrics.lineGap = toSigned(varied(font, os2->typoLineGap, HB_OT_METRICS_TAG_HORIZONTAL_LINE_GAP));
    } else if (os2 != nullptr) {
        const long ascent = varied(font, os2->winAscent, HB_OT_METRICS_TAG_HORIZONTAL_CLIPPING_ASCENT);
        // Fonts exist that store the descent with the sign of a descender.
        const long stored = std::labs(static_cast<std::int16_t>(os2->winDescent));
        const long descent = varied(font, stored, HB_OT_METRICS_TAG_HORIZONTAL_CLIPPING_DESCENT);
        metrics.ascent = toUnsigned(ascent);
        metrics.descent = toUnsigned(descent);
        // The gap is what hhea's line is taller than the box of ascent and descent.
        const long line = hhea != nullptr ? hhea->ascender + std::labs(hhea->descender) + hhea->lineGap : 0;
        metrics.lineGap = toSigned(std::max(0L, line - ascent - descent));
    } else if (hhea != nullptr) {
        metrics.ascent = toUnsigned(hhea->ascender);
        metrics.descent = toUnsigned(std::labs(hhea->descender));
    } else {
        metrics.ascent = toUnsigned(std::lround(0.8 * metrics.designUnitsPerEm));
        metrics.descent = toUnsigned(metrics.designUnitsPerEm - metrics.ascent);
    }
}

void readDecorations(hb_font_t* font, const Os2Table* os2, const PostTable* post, DWRITE_FONT_METRICS& metrics) {
    const long em = metrics.designUnitsPerEm;
    long position = -em / 10;
    long thickness = 0;
    if (post != nullptr) {
        position = varied(font, post->underlinePosition, HB_OT_METRICS_TAG_UNDERLINE_OFFSET);
        thickness = varied(font, post->underlineThickness, HB_OT_METRICS_TAG_UNDERLINE_SIZE);
    }
    metrics.underlinePosition = toSigned(position);
    metrics.underlineThickness = toUnsigned(thickness > 0 ? thickness : em / 14);

    position = em / 3;
    thickness = 0;
    if (os2 != nullptr) {
        position = varied(font, os2->strikeoutPosition, HB_OT_METRICS_TAG_STRIKEOUT_OFFSET);
        thickness = varied(font, os2->strikeoutSize, HB_OT_METRICS_TAG_STRIKEOUT_SIZE);
    }
    metrics.strikethroughPosition = toSigned(position);
    metrics.strikethroughThickness = thickness > 0 ? toUnsigned(thickness) : metrics.underlineThickness;
}

void readLetterHeights(hb_font_t* font, const Os2Table* os2, DWRITE_FONT_METRICS& metrics) {
    const bool statesCap = os2 != nullptr && os2->capHeight > 0;
    const bool statesX = os2 != nullptr && os2->xHeight > 0;
    const long cap = statesCap ? varied(font, os2->capHeight, HB_OT_METRICS_TAG_CAP_HEIGHT) : 0;
    const long x = statesX ? varied(font, os2->xHeight, HB_OT_METRICS_TAG_X_HEIGHT) : 0;
    metrics.capHeight = letterHeight(cap, font, U'H', 0.7, metrics.designUnitsPerEm);
    metrics.xHeight = letterHeight(x, font, U'x', 0.5, metrics.designUnitsPerEm);
}

} // namespace

DWRITE_FONT_METRICS readFontMetrics(hb_font_t* font) {
    hb_face_t* const face = hb_font_get_face(font);
    const std::optional<Os2Table> os2 = readOs2(face);
    const std::optional<HheaTable> hhea = readHhea(face);
    const std::optional<PostTable> post = readPost(face);

    DWRITE_FONT_METRICS metrics{};
    metrics.designUnitsPerEm = static_cast<UINT16>(hb_face_get_upem(face));
    readVerticalExtents(font, os2 ? &*os2 : nullptr, hhea ? &*hhea : nullptr, metrics);
    readDecorations(font, os2 ? &*os2 : nullptr, post ? &*post : nullptr, metrics);
    readLetterHeights(font, os2 ? &*os2 : nullptr, metrics);
    return metrics;
}

} // namespace platform
