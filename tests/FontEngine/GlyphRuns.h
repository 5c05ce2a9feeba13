#pragma once

#include <string>
#include <vector>

#include <dwrite.h>

// A glyph run with its description, as a platform hands it to a renderer: the
// arrays live as long as this object.
struct DrawnGlyphRun {
    std::wstring text = L"ab";
    UINT32 textPosition = 0;
    std::vector<UINT16> glyphIndices = {36, 37};
    std::vector<FLOAT> advances = {5.0f, 4.0f};
    std::vector<DWRITE_GLYPH_OFFSET> offsets;
    std::vector<UINT16> clusterMap = {0, 1};
    FLOAT emSize = 16.0f;
    BOOL isSideways = FALSE;
    UINT32 bidiLevel = 0;

    HRESULT draw(IDWriteTextRenderer& renderer, IDWriteFontFace* fontFace, FLOAT x, FLOAT y) const {
        DWRITE_GLYPH_RUN run = {};
        run.fontFace = fontFace;
        run.fontEmSize = emSize;
        run.glyphCount = static_cast<UINT32>(glyphIndices.size());
        run.glyphIndices = glyphIndices.data();
        run.glyphAdvances = advances.data();
        run.glyphOffsets = offsets.empty() ? nullptr : offsets.data();
        run.isSideways = isSideways;
        run.bidiLevel = bidiLevel;
        DWRITE_GLYPH_RUN_DESCRIPTION description = {};
        description.localeName = L"";
        description.string = text.c_str();
        description.stringLength = static_cast<UINT32>(text.length());
        description.clusterMap = clusterMap.data();
        description.textPosition = textPosition;
        return renderer.DrawGlyphRun(nullptr, x, y, DWRITE_MEASURING_MODE_NATURAL, &run, &description, nullptr);
    }
};

inline HRESULT drawUnderline(IDWriteTextRenderer& renderer, FLOAT x, FLOAT y, FLOAT width, FLOAT thickness,
                             FLOAT offset) {
    DWRITE_UNDERLINE underline = {};
    underline.width = width;
    underline.thickness = thickness;
    underline.offset = offset;
    return renderer.DrawUnderline(nullptr, x, y, &underline, nullptr);
}

inline HRESULT drawStrikethrough(IDWriteTextRenderer& renderer, FLOAT x, FLOAT y, FLOAT width, FLOAT thickness,
                                 FLOAT offset) {
    DWRITE_STRIKETHROUGH strikethrough = {};
    strikethrough.width = width;
    strikethrough.thickness = thickness;
    strikethrough.offset = offset;
    return renderer.DrawStrikethrough(nullptr, x, y, &strikethrough, nullptr);
}
