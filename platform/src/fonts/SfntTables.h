#pragma once

#include "fonts/HarfBuzz.h"

#include <cstdint>
#include <optional>

namespace platform {

/// The fields of OS/2 that HarfBuzz has no question for, or answers with substitutes.
struct Os2Table {
    std::uint16_t version;
    std::uint16_t weightClass;
    std::uint16_t widthClass;
    std::int16_t strikeoutSize;
    std::int16_t strikeoutPosition;
    std::uint16_t selection;
    std::int16_t typoAscender;
    std::int16_t typoDescender;
    std::int16_t typoLineGap;
    std::uint16_t winAscent;
    std::uint16_t winDescent;
    /// 0 before version 2.
    std::int16_t xHeight;
    std::int16_t capHeight;

    static constexpr std::uint16_t selectionItalic = 1u << 0;
    static constexpr std::uint16_t selectionBold = 1u << 5;
    static constexpr std::uint16_t selectionUseTypoMetrics = 1u << 7;
    static constexpr std::uint16_t selectionOblique = 1u << 9;
};

struct HheaTable {
    std::int16_t ascender;
    std::int16_t descender;
    std::int16_t lineGap;
};

struct PostTable {
    std::int16_t underlinePosition;
    std::int16_t underlineThickness;
};

/// Whether there is a table head, with the number that marks it.
bool hasHead(hb_face_t* face);

/// Whether the table cmap has the encoding that fonts of symbols have on Windows.
bool hasSymbolEncoding(hb_face_t* face);

/// The font's revision as the table head states it; 0 without one.
std::uint32_t readRevision(hb_face_t* face);

/// Nothing when the face lacks the table or has too little of it.
std::optional<Os2Table> readOs2(hb_face_t* face);
std::optional<HheaTable> readHhea(hb_face_t* face);
std::optional<PostTable> readPost(hb_face_t* face);

} // namespace platform
