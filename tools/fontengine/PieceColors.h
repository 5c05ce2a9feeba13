#pragma once

#include <cstdint>
#include <map>

#include <dxf/EntityWriter.h>

namespace tool {

// Colours of pieces, as the drawing's version can say them.
class PieceColors {
public:
    // Stands in a document for whatever colour the text itself has: no opaque
    // colour, so no code of a content asks for it.
    static constexpr std::uint32_t ofText = 0x01000000U;
    // Of colour 7, which is dark on paper.
    static constexpr std::uint32_t foreground = 0xFF000000U;

    explicit PieceColors(const dxf::Drawing& drawing);

    // Nothing for the text's own colour; a number where there is one for the
    // colour; else the colour itself, or the nearest number in older drawings.
    [[nodiscard]] dxf::PieceColor of(std::uint32_t argb) const;

private:
    bool m_hasTrueColor = false;
    std::map<std::uint32_t, int> m_numbers;
};

} // namespace tool
