#pragma once

#include "fonts/GlyphBounds.h"
#include "fonts/HarfBuzz.h"
#include "fonts/OutlineSink.h"

namespace platform {

/// Plays a glyph's outline in the font's scale, without contours that are a single point. Nothing for a glyph without
/// outline.
void playOutline(hb_font_t* font, hb_codepoint_t glyph, OutlineSink& sink);

/// As playOutline, with all stems widened by `strength` units; heights stay as they are,
/// and the left edge too.
void playEmboldenedOutline(hb_font_t* font, hb_codepoint_t glyph, float strength, OutlineSink& sink);

/// Whether some glyphs of a face may be pictures made of pixels.
bool hasPictures(hb_face_t* face);

/// For a glyph that is a picture and has no outline: plays a frame around the picture's place, so that text has its
/// extent and a drawing of outlines shows that something belongs there. False, and nothing played, for other glyphs.
bool playPictureFrame(hb_font_t* font, hb_codepoint_t glyph, OutlineSink& sink);

/// The exact bounds of an outline: of its curves, not of their control points.
class OutlineBounds final : public OutlineSink {
public:
    void moveTo(OutlinePoint to) override;
    void lineTo(OutlinePoint to) override;
    void quadTo(OutlinePoint control, OutlinePoint to) override;
    void cubicTo(OutlinePoint control1, OutlinePoint control2, OutlinePoint to) override;
    void close() override {}

    const GlyphBounds& bounds() const noexcept { return m_bounds; }

private:
    void include(OutlinePoint point);

    GlyphBounds m_bounds;
    OutlinePoint m_current{0, 0};
};

GlyphBounds outlineBounds(hb_font_t* font, hb_codepoint_t glyph);

} // namespace platform
