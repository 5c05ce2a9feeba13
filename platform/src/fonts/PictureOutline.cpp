#include "fonts/GlyphOutline.h"

#include <hb-ot.h>

namespace platform {

namespace {

/// The frame's bars, as a share of the em.
constexpr int barsPerEm = 32;

/// A rectangle by opposite corners, which also say the direction it is drawn in.
void playRectangle(OutlinePoint from, OutlinePoint to, OutlineSink& sink) {
    sink.moveTo(from);
    sink.lineTo({from.x, to.y});
    sink.lineTo(to);
    sink.lineTo({to.x, from.y});
    sink.close();
}

} // namespace

bool hasPictures(hb_face_t* face) {
    return hb_ot_color_has_png(face) != 0;
}

bool playPictureFrame(hb_font_t* font, hb_codepoint_t glyph, OutlineSink& sink) {
    hb_glyph_extents_t extents{};
    if (!outlineBounds(font, glyph).empty() || !hb_font_get_glyph_extents(font, glyph, &extents) ||
        extents.width == 0 || extents.height == 0) {
        return false;
    }
    // Extents hang down from their top.
    const auto left = static_cast<float>(extents.x_bearing);
    const auto right = static_cast<float>(extents.x_bearing + extents.width);
    const auto top = static_cast<float>(extents.y_bearing);
    const auto bottom = static_cast<float>(extents.y_bearing + extents.height);
    const float bar = static_cast<float>(hb_face_get_upem(hb_font_get_face(font))) / barsPerEm;
    playRectangle({left, bottom}, {right, top}, sink);
    if (right - left > 2 * bar && top - bottom > 2 * bar) {
        // Drawn the other way round, this is the hole.
        playRectangle({right - bar, bottom + bar}, {left + bar, top - bar}, sink);
    }
    return true;
}

} // namespace platform
