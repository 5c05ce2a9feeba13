#pragma once

#include <cstddef>

#include <unknwn.h>

namespace platform {

class CFontFace;

/// The short road from a glyph run to the bounds of its outline.
///
/// A face that is asked for the outline of a run asks the sink for this interface. Our own path geometry answers; it
/// then takes whole glyphs, whose exact bounds the face keeps, and turns them into curves only if somebody needs the
/// curves. Every other sink gets the curves at once. What a caller can observe is the same on both roads.
///
/// The caller still announces the fill mode through the sink's own SetFillMode. A reference taken by QueryInterface is
/// released as usual. One sink serves one thread.
struct IGlyphOutlineSink : IUnknown {
    /// Announces how many glyphs follow, so that memory is taken once.
    virtual void STDMETHODCALLTYPE reserveGlyphs(std::size_t count) noexcept = 0;

    /// Adds one upright glyph whose origin lies at (x, y), in the sink's units, y axis down. `scale` is em /
    /// unitsPerEm. A glyph without outline adds nothing. The face must outlive the sink, as those do that live with the
    /// process. A failure (an open figure, a closed sink, no memory) is remembered and reported by Close, as for all
    /// other additions.
    virtual void STDMETHODCALLTYPE addGlyph(CFontFace& face, UINT16 glyph, float scale, float x, float y) noexcept = 0;
};

} // namespace platform

// No caller outside this library knows it.
PLATFORM_UUID(platform::IGlyphOutlineSink, "5f0c6d3e-41d7-4b8a-9a52-0e6b1d8f77c4");
