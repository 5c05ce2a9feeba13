#include "lines/LinePlacement.h"

#include <algorithm>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace platform {

namespace {

bool isSpace(std::u16string_view text, const ShapedText& shaped, UINT32 cluster) {
    const char16_t unit = text[shaped.clusters[cluster].textStart];
    return unit == u' ' || unit == u'\u00A0';
}

UChar32 firstCharacter(std::u16string_view text, const ShapedText& shaped, UINT32 cluster) {
    UChar32 character = 0;
    U16_GET(text.data(), 0, shaped.clusters[cluster].textStart, text.size(), character);
    return character;
}

/// Whether a character is of a script that is written without spaces, in full-width cells.
bool isIdeograph(UChar32 character) {
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH;
}

bool isOpening(UChar32 character) {
    return (U_GET_GC_MASK(character) & (U_GC_PS_MASK | U_GC_PI_MASK)) != 0;
}

/// Brackets that close, and stops.
bool isClosing(UChar32 character) {
    return (U_GET_GC_MASK(character) & (U_GC_PE_MASK | U_GC_PF_MASK | U_GC_PO_MASK)) != 0;
}

/// Whether text may be pulled apart between `cluster` and the next, at least one of them an ideograph. Punctuation
/// stays with what it belongs to.
bool isIdeographicGap(std::u16string_view text, const ShapedText& shaped, UINT32 cluster) {
    for (const UINT32 side : {cluster, cluster + 1}) {
        if (shaped.clusters[side].has(Cluster::Shapeless) || shaped.clusters[side].has(Cluster::Object)) {
            return false;
        }
    }
    const UChar32 before = firstCharacter(text, shaped, cluster);
    const UChar32 after = firstCharacter(text, shaped, cluster + 1);
    if (isOpening(before) || isClosing(after)) {
        return false;
    }
    // Narrow spaces keep their width in lines that are pulled apart elsewhere.
    return isIdeograph(before) ? isIdeograph(after) || u_isUWhiteSpace(after) == 0
                               : isIdeograph(after) && u_isUWhiteSpace(before) == 0;
}

/// Whether a justified line may be stretched after `cluster`.
bool isGap(std::u16string_view text, const ShapedText& shaped, const Line& line, const PlacedLine& placed,
           UINT32 cluster) {
    // Nothing is stretched before the last tab, whose stop would move, nor at the line's very end.
    if (cluster < placed.gapBegin || cluster + 1 >= line.trailingBegin) {
        return false;
    }
    if (placed.gapsAreSpaces) {
        return isSpace(text, shaped, cluster);
    }
    return isIdeographicGap(text, shaped, cluster);
}

UINT32 countGaps(std::u16string_view text, const ShapedText& shaped, const Line& line, const PlacedLine& placed) {
    UINT32 gaps = 0;
    for (UINT32 i = placed.gapBegin; i < line.trailingBegin; ++i) {
        gaps += isGap(text, shaped, line, placed, i) ? 1U : 0U;
    }
    return gaps;
}

void justify(std::u16string_view text, const ShapedText& shaped, const Line& line, float boxWidth, PlacedLine& placed) {
    const float missing = boxWidth - placed.width;
    if (line.endsParagraph || line.isTrimmed || !(missing > 0.0F)) {
        return;
    }
    placed.gapBegin = line.clusterBegin;
    for (UINT32 i = line.clusterBegin; i < line.trailingBegin; ++i) {
        if (shaped.clusters[i].has(Cluster::Tab)) {
            placed.gapBegin = i + 1;
        }
    }
    UINT32 gaps = countGaps(text, shaped, line, placed);
    if (gaps == 0) {
        placed.gapsAreSpaces = false;
        gaps = countGaps(text, shaped, line, placed);
    }
    if (gaps > 0) {
        placed.gap = missing / static_cast<float>(gaps);
        placed.width = boxWidth;
    }
}

/// The left edge of something `width` wide in the box. Nothing is clamped: what is too wide stands out.
float leftEdge(const ParagraphSettings& settings, float boxWidth, float width) {
    const bool isLeading = settings.textAlignment == DWRITE_TEXT_ALIGNMENT_LEADING ||
                           settings.textAlignment == DWRITE_TEXT_ALIGNMENT_JUSTIFIED;
    if (settings.textAlignment == DWRITE_TEXT_ALIGNMENT_CENTER) {
        return (boxWidth - width) / 2.0F;
    }
    return isLeading == settings.rightToLeft() ? boxWidth - width : 0.0F;
}

float topEdge(const ParagraphSettings& settings, float boxHeight, float height) {
    switch (settings.paragraphAlignment) {
    case DWRITE_PARAGRAPH_ALIGNMENT_FAR:
        return boxHeight - height;
    case DWRITE_PARAGRAPH_ALIGNMENT_CENTER:
        return (boxHeight - height) / 2.0F;
    default:
        return 0.0F;
    }
}

} // namespace

void placeLines(std::u16string_view text, const ShapedText& shaped, const std::vector<Line>& lines,
                const ParagraphSettings& settings, const Box& box, const std::vector<SideBearings>& bearings,
                Placement& placement) {
    placement = Placement();
    placement.lines.resize(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        PlacedLine& placed = placement.lines[i];
        placed.width = line.width;
        if (!bearings.empty()) {
            placed.bearing = bearings[i].left;
            placed.width -= bearings[i].left + bearings[i].right;
        }
        if (settings.textAlignment == DWRITE_TEXT_ALIGNMENT_JUSTIFIED) {
            justify(text, shaped, line, box.width, placed);
        }
        placed.left = leftEdge(settings, box.width, placed.width);
        placement.width = std::max(placement.width, placed.width);
        placement.fullWidth = std::max(placement.fullWidth, placed.width + (line.fullWidth - line.width));
        placement.height += line.height;
    }
    placement.left = leftEdge(settings, box.width, placement.width);
    placement.top = topEdge(settings, box.height, placement.height);
    float top = placement.top;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        placement.lines[i].top = top;
        top += lines[i].height;
    }
}

float stretchOf(std::u16string_view text, const ShapedText& shaped, const Line& line, const PlacedLine& placed,
                UINT32 cluster) {
    return placed.gap != 0.0F && isGap(text, shaped, line, placed, cluster) ? placed.gap : 0.0F;
}

} // namespace platform
