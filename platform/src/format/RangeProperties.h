#pragma once

#include <cstdint>
#include <map>

#include <dwrite.h>

#include "com/Reference.h"
#include "format/Name.h"
#include "format/ParagraphSettings.h"

namespace platform {

/// The room that every cluster gets before and after it in reading order, and how wide it is at least.
struct CharacterSpacing {
    FLOAT leading = 0.0F;
    FLOAT trailing = 0.0F;
    FLOAT minimumAdvance = 0.0F;
};

/// Whether both are the same number, or both are none.
bool sameNumber(FLOAT left, FLOAT right) noexcept;

/// Whether both are the same numbers, or no numbers in the same places.
bool sameSpacing(const CharacterSpacing& left, const CharacterSpacing& right) noexcept;

/// Everything that can differ from one stretch of a layout's text to the next.
struct RunStyle {
    Reference<IDWriteFontCollection> collection;
    Name family;
    Name locale;
    DWRITE_FONT_WEIGHT weight = DWRITE_FONT_WEIGHT_NORMAL;
    DWRITE_FONT_STYLE style = DWRITE_FONT_STYLE_NORMAL;
    DWRITE_FONT_STRETCH stretch = DWRITE_FONT_STRETCH_NORMAL;
    FLOAT size = 0.0F;
    bool underline = false;
    bool strikethrough = false;
    bool isKerned = true;
    CharacterSpacing spacing;
    Reference<IUnknown> effect;
    Reference<IDWriteInlineObject> inlineObject;
    Reference<IDWriteTypography> typography;
};

/// Whether text of both styles is formatted alike in every respect.
bool sameStyle(const RunStyle& left, const RunStyle& right) noexcept;

/// Whether text of both styles can be shaped as one run: decorations and effects are drawn over the shapes, and spacing
/// moves them apart.
bool sameShaping(const RunStyle& left, const RunStyle& right) noexcept;

/// The styles of the positions 0 .. 2^32-2, whatever the length of the text: sorted stretches without gaps, each
/// different from its neighbours. Finding and setting take logarithmic time in the number of stretches.
class RangeProperties {
public:
    explicit RangeProperties(const FontSettings& initial);

    /// The style at `position`; where asked, also the stretch of positions around it with exactly this style.
    const RunStyle& at(UINT32 position, DWRITE_TEXT_RANGE* range = nullptr) const noexcept;

    /// Sets one member for a range. S_FALSE says that every position had that value already; a range that runs past the
    /// last position is E_INVALIDARG.
    template <class Value>
    HRESULT set(DWRITE_TEXT_RANGE range, Value RunStyle::*member, const Value& value);

    /// Sets whether inline objects are somewhere.
    [[nodiscard]] bool hasInlineObjects() const noexcept;

    /// The stretches by their start positions.
    using Stretches = std::map<UINT32, RunStyle>;
    [[nodiscard]] const Stretches& stretches() const noexcept { return m_stretches; }
    /// The stretch that holds `position`.
    [[nodiscard]] Stretches::const_iterator find(UINT32 position) const noexcept;

    /// The end of the positions.
    static constexpr UINT32 end = 0xFFFFFFFF;

private:
    static bool sameValue(FLOAT left, FLOAT right) noexcept { return sameNumber(left, right); }
    static bool sameValue(const Name& left, const Name& right) noexcept { return sameName(left, right); }
    static bool sameValue(const CharacterSpacing& left, const CharacterSpacing& right) noexcept {
        return sameSpacing(left, right);
    }
    template <class Value>
    static bool sameValue(const Value& left, const Value& right) noexcept {
        return left == right;
    }

    /// Makes `position` the start of a stretch.
    Stretches::iterator split(UINT32 position);
    /// Joins the stretches that start within [first, last] with their predecessors where they are alike.
    void join(UINT32 first, UINT32 last);

    Stretches m_stretches;
};

template <class Value>
HRESULT RangeProperties::set(DWRITE_TEXT_RANGE range, Value RunStyle::*member, const Value& value) {
    if (range.length > end - range.startPosition) {
        return E_INVALIDARG;
    }
    const UINT32 rangeEnd = range.startPosition + range.length;
    // Setting what is there already is the usual case and must not cut anything.
    auto stretch = find(range.startPosition);
    while (stretch != m_stretches.end() && stretch->first < rangeEnd && sameValue(stretch->second.*member, value)) {
        ++stretch;
    }
    if (range.length == 0 || stretch == m_stretches.end() || stretch->first >= rangeEnd) {
        return S_FALSE;
    }
    auto changed = split(range.startPosition);
    if (rangeEnd < end) {
        split(rangeEnd);
    }
    for (; changed != m_stretches.end() && changed->first < rangeEnd; ++changed) {
        changed->second.*member = value;
    }
    join(range.startPosition, rangeEnd);
    return S_OK;
}

} // namespace platform
