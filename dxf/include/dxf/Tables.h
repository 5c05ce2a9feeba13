#pragma once

#include "Geometry.h"
#include <Common/FontEngineExport.h>

#include <cstdint>
#include <optional>
#include <string>

namespace dxf {

/// Variables of the drawing's header that texts depend on. What is missing has the value given here.
struct FONTENGINE_DXF_API Header {
    std::wstring version;            ///< `$ACADVER`: "AC1009" (R12) to "AC1032" (2018); "AC1009" when missing.
    bool hasVersion = false;         ///< False when `$ACADVER` is missing.
    std::wstring codePageName;       ///< `$DWGCODEPAGE` as written; empty when missing.
    std::wstring textStyle;          ///< `$TEXTSTYLE`, "STANDARD" when missing.
    double textSize = 0.0;           ///< `$TEXTSIZE`; 2.5 or 0.2 (by `$MEASUREMENT`) when missing or not positive.
    std::wstring dimTextStyle;       ///< `$DIMTXSTY`.
    double dimTextSize = 0.0;        ///< `$DIMTXT` times `$DIMSCALE` (1 where that is 0); textSize when missing.
    int insUnits = 0;                ///< `$INSUNITS`, 0: unitless.
    bool metric = false;             ///< `$MEASUREMENT` is 1.
    bool mirrorText = false;         ///< `$MIRRTEXT` is 1.
    std::uint64_t handleSeed = 0;    ///< `$HANDSEED`; 0 when missing.
    std::optional<Point> extentsMin; ///< `$EXTMIN`, nothing when missing or beyond any drawing (1e20 in an empty one).
    std::optional<Point> extentsMax; ///< `$EXTMAX`, the same.

    /// 1009 for "AC1009"; 1009 when the version is missing or has no number.
    [[nodiscard]] int versionNumber() const noexcept;
};

/// A record of the STYLE table.
struct TextStyle {
    std::wstring name;
    std::wstring fontFile;           ///< Group 3, as written: "arial.ttf", "romans.shx", "txt", "".
    std::wstring bigFontFile;        ///< Group 4: an SHX font of two-byte characters; mostly empty.
    std::wstring family;             ///< Of a TrueType font, from the extended data; empty when that is missing.
    bool bold = false;               ///< From the extended data.
    bool italic = false;             ///< From the extended data.
    std::optional<unsigned> charset; ///< Windows character set, from the extended data.
    double fixedHeight = 0.0;        ///< 0: each text has its own.
    double lastHeight = 0.0;
    double widthFactor = 1.0;
    double oblique = 0.0; ///< Degrees.
    bool backward = false;
    bool upsideDown = false;
    bool vertical = false;
    bool shapeFile = false; ///< The record names a file of shapes and is no text style.
    std::uint64_t handle = 0;
};

/// A record of the LAYER table.
struct Layer {
    std::wstring name;
    int color = 7;                          ///< Colour number, always positive.
    std::optional<std::uint32_t> trueColor; ///< 0xRRGGBB.
    bool off = false;
    bool frozen = false;
    bool locked = false;
};

/// A record of the DIMSTYLE table: what the text of a dimension takes from it.
struct DimStyle {
    std::wstring name;
    double textHeight = 0.0;     ///< With the overall scale applied; 0 when missing.
    std::uint64_t textStyle = 0; ///< Handle of a text style; 0 when missing.
};

} // namespace dxf
