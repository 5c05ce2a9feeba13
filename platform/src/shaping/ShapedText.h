#pragma once

#include <cstdint>
#include <vector>

#include <dwrite.h>
#include <hb.h>

#include "format/Name.h"

namespace platform {

class CFontFace;

enum class ItemKind : std::uint8_t {
    Text,
    /// One newline; CR LF counts as one, as long as both are formatted alike.
    Newline,
    Tab,
    /// Control characters, which fonts have no shapes for.
    Control,
    /// A stretch of text that an inline object stands for.
    Object
};

/// A maximal stretch of text that is shaped at once: one font, size, script, direction, locale, kerning and
/// typography.
struct TextItem {
    UINT32 start = 0;
    UINT32 length = 0;
    /// Interned; null only in a layout without any font, which is refused before anything is shaped.
    CFontFace* face = nullptr;
    float emSize = 0.0F;
    hb_script_t script = HB_SCRIPT_COMMON;
    std::uint8_t bidiLevel = 0;
    ItemKind kind = ItemKind::Text;
    /// No installed font has these characters: they are drawn as the face's glyph for missing characters.
    bool isMissing = false;
    /// Pairs of letters are kerned.
    bool isKerned = true;
    Name locale;
    /// There may be an item for every character, so that they are kept small: an object has no features.
    union {
        IDWriteInlineObject* object = nullptr;
        IDWriteTypography* typography;
    };
    /// The item's clusters, as indices into ShapedText::clusters.
    UINT32 clusterBegin = 0;
    UINT32 clusterEnd = 0;

    [[nodiscard]] bool isRightToLeft() const noexcept { return (bidiLevel & 1) != 0; }
};

/// The smallest piece of text that has a place of its own: one or more characters drawn by zero or more glyphs.
struct Cluster {
    enum Flag : std::uint16_t {
        Whitespace = 1 << 0,
        /// Whitespace that may hang over the end of a line without making it wider.
        Hanging = 1 << 1,
        Newline = 1 << 2,
        SoftHyphen = 1 << 3,
        Tab = 1 << 4,
        /// Nothing is drawn for the cluster, whatever glyphs it has.
        Shapeless = 1 << 5,
        /// A line break before this cluster changes shapes on either side.
        UnsafeBefore = 1 << 6,
        /// An inline object.
        Object = 1 << 7,
        /// An inline object insists on starting a line, or on ending one.
        MustBreakBefore = 1 << 8,
        MustBreakAfter = 1 << 9,
        /// The CR of a CR LF: the LF ends the line.
        NewlineStart = 1 << 10
    };

    UINT32 textStart = 0;
    /// The cluster's first glyph; its glyphs end where the next cluster's begin.
    UINT32 glyphStart = 0;
    float width = 0.0F;
    std::uint16_t flags = 0;

    [[nodiscard]] bool has(Flag flag) const noexcept { return (flags & flag) != 0; }
};

/// Text after shaping: items, their clusters and the clusters' glyphs, each in the order of the text.
///
/// Glyphs are kept as the arrays that a renderer takes; lengths are in the layout's units, offsets point along the
/// advance direction and upwards.
struct ShapedText {
    std::vector<TextItem> items;
    /// One more than there are clusters: the last one stands for the end.
    std::vector<Cluster> clusters;
    std::vector<UINT16> glyphs;
    std::vector<FLOAT> advances;
    std::vector<DWRITE_GLYPH_OFFSET> offsets;

    [[nodiscard]] UINT32 clusterCount() const noexcept {
        return clusters.empty() ? 0 : static_cast<UINT32>(clusters.size()) - 1;
    }
    [[nodiscard]] UINT32 textEnd(UINT32 cluster) const noexcept { return clusters[cluster + 1].textStart; }
    [[nodiscard]] UINT32 textLength(UINT32 cluster) const noexcept {
        return textEnd(cluster) - clusters[cluster].textStart;
    }
    [[nodiscard]] UINT32 glyphEnd(UINT32 cluster) const noexcept { return clusters[cluster + 1].glyphStart; }

    /// Makes room for as much as `other` holds.
    void reserveLike(const ShapedText& other);

    /// Appends clusters [begin, end) of another text with their glyphs. A part of an item becomes an item of its own.
    void append(const ShapedText& other, UINT32 begin, UINT32 end);

    /// The item that holds `cluster`, found in logarithmic time.
    [[nodiscard]] UINT32 itemOf(UINT32 cluster) const noexcept;
    /// The cluster that holds text position `position` of a text that is not empty; the last one for positions past the
    /// end.
    [[nodiscard]] UINT32 clusterAt(UINT32 position) const noexcept;
};

} // namespace platform
