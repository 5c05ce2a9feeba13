#pragma once

#include <dwrite.h>

#include <cstdint>

#include <boost/container/flat_map.hpp>

namespace fonts {

// Which glyphs leave ink. Each is asked for once.
class CGlyphInk {
public:
    // `face` is `run`'s, by its number in the layout. Stores whether the glyph has an outline.
    HRESULT find(const DWRITE_GLYPH_RUN& run, std::uint32_t face, UINT16 glyph, bool& hasInk);

private:
    boost::container::flat_map<std::uint64_t, bool> m_known;
};

} // namespace fonts
