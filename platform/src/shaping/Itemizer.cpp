#include "shaping/Itemizer.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "fallback/FallbackMapper.h"
#include "fallback/FontFallback.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "shaping/HostFallback.h"
#include "unicode/BidiLevels.h"
#include "unicode/Graphemes.h"
#include "unicode/ScriptRuns.h"

namespace platform {

namespace {

/// The family that a style asks for or what stands for it, and the face that draws what no font has.
struct BaseFont {
    CFontFamily* family = nullptr;
    CFontFace* face = nullptr;
};

BaseFont findBaseFont(const RunStyle& style) {
    BaseFont base;
    base.family = CFontCollection::of(style.collection.get()).familyFor(textOf(style.family));
    if (base.family != nullptr) {
        base.face = &base.family->match(style.weight, style.stretch, style.style).face();
        return base;
    }
    const Mapping substitute = FallbackMapper::system().map(u" ", 0, 1, textOf(style.locale), nullptr, style.weight,
                                                            style.style, style.stretch);
    if (substitute.font != nullptr) {
        base.face = &substitute.font->face();
    }
    return base;
}

constexpr bool isControl(char16_t unit) noexcept {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

/// Shaping takes quadratic time in the number of marks on one base. No language comes near this many.
constexpr std::size_t maxMarks = 1000;
constexpr char16_t firstMark = 0x300;

bool isMark(char16_t unit) {
    return u_hasBinaryProperty(unit, UCHAR_GRAPHEME_EXTEND) != 0;
}

/// Whether `position`, which lies within `text`, is in the middle of a surrogate pair.
bool splitsPair(std::u16string_view text, std::size_t position) noexcept {
    return position > 0 && U16_IS_TRAIL(text[position]) && U16_IS_LEAD(text[position - 1]);
}

ItemKind kindOf(char16_t unit) noexcept {
    if (isNewline(unit)) {
        return ItemKind::Newline;
    }
    if (unit == u'\t') {
        return ItemKind::Tab;
    }
    return isControl(unit) ? ItemKind::Control : ItemKind::Text;
}

/// Goes through the text once, from front to back, and writes the items.
class Itemizer {
public:
    Itemizer(const TextBuffer& text, const RangeProperties& properties, const ParagraphSettings& settings,
             std::vector<TextItem>& items, std::vector<Reference<IDWriteFontFace>>& heldFaces)
        : m_text(text.units()), m_graphemes(text.units()), m_properties(properties),
          m_base(paragraphLevel(settings.rightToLeft())), m_items(items) {
        if (IDWriteFontFallback* fallback = settings.fontFallback.get();
            fallback != nullptr && fallback != &CFontFallback::system()) {
            m_host.emplace(*fallback, text, properties, settings.readingDirection, heldFaces);
        }
        const bool rightToLeft = settings.rightToLeft();
        std::u16string_view analysed = m_text;
        std::u16string substituted;
        if (properties.hasInlineObjects()) {
            substituted = withObjects();
            analysed = substituted;
        }
        findScriptRuns(analysed, m_scripts);
        if (rightToLeft || !text.isAscii()) {
            findBidiLevels(analysed, rightToLeft, m_levels);
        }
    }

    bool run() {
        auto stretch = m_properties.stretches().begin();
        while (m_position < m_text.size()) {
            const RunStyle& style = stretch->second;
            do {
                ++stretch;
            } while (stretch != m_properties.stretches().end() && isContinued(style, stretch->second));
            const std::size_t end = borderBefore(stretch);
            // A pair that the stretch before began with is its alone.
            if (end > m_position && !addStyle(style, end)) {
                return false;
            }
        }
        return true;
    }

private:
    /// An inline object is one thing, however the text that it replaces is formatted.
    static bool isContinued(const RunStyle& style, const RunStyle& next) {
        return style.inlineObject ? style.inlineObject == next.inlineObject : sameShaping(style, next);
    }

    /// Where `next` takes over from the stretch before it. A border in the middle of a pair gives way to the earlier of
    /// the two styles, except to an inline object: what it stands for it stands for whole.
    std::size_t borderBefore(RangeProperties::Stretches::const_iterator next) const {
        if (next == m_properties.stretches().end() || next->first >= m_text.size()) {
            return m_text.size();
        }
        const std::size_t border = next->first;
        if (!splitsPair(m_text, border)) {
            return border;
        }
        if (!next->second.inlineObject) {
            return border + 1;
        }
        return std::prev(next)->second.inlineObject ? border : border - 1;
    }

    /// The text with a neutral character in the place of everything that inline objects stand for.
    std::u16string withObjects() const {
        std::u16string text(m_text);
        for (auto stretch = m_properties.stretches().begin(); stretch != m_properties.stretches().end(); ++stretch) {
            if (!stretch->second.inlineObject) {
                continue;
            }
            const std::size_t begin = stretch == m_properties.stretches().begin() ? 0 : borderBefore(stretch);
            const std::size_t end = borderBefore(std::next(stretch));
            for (std::size_t i = begin; i < end; ++i) {
                text[i] = u'\uFFFC';
            }
        }
        return text;
    }

    bool addStyle(const RunStyle& style, std::size_t end) {
        const BaseFont base = findBaseFont(style);
        if (base.face == nullptr) {
            return false;
        }
        if (style.inlineObject) {
            add(style, *base.face, 1.0F, ItemKind::Object, end);
            return true;
        }
        while (m_position < end) {
            if (m_host) {
                const HostFallback::Answer answer =
                    m_host->ask(static_cast<UINT32>(m_position), static_cast<UINT32>(end - m_position), style);
                const std::size_t answered = m_position + answer.length;
                const bool isHalf = answered < end && splitsPair(m_text, answered);
                addMapped(style, base, answer.face, answer.scale, isHalf ? answered + 1 : answered);
                continue;
            }
            const Mapping mapping =
                FallbackMapper::system().map(m_text, m_position, end - m_position, textOf(style.locale), base.family,
                                             style.weight, style.style, style.stretch);
            addMapped(style, base, mapping.font != nullptr ? &mapping.font->face() : nullptr, mapping.scale,
                      std::min(m_position + std::max<std::size_t>(mapping.length, 1), end));
        }
        return true;
    }

    /// Adds what is drawn with `face`; null where there is no font for it.
    void addMapped(const RunStyle& style, const BaseFont& base, CFontFace* face, float scale, std::size_t end) {
        while (m_position < end) {
            const ItemKind kind = kindOf(m_text[m_position]);
            add(style, face != nullptr ? *face : *base.face, scale, kind, endOfItem(kind, end)).isMissing =
                face == nullptr;
        }
    }

    /// Where the item that starts here ends, at the latest at `limit`.
    std::size_t endOfItem(ItemKind kind, std::size_t limit) {
        std::size_t end = m_position + 1;
        if (kind == ItemKind::Newline) {
            return end < limit && startsNewlinePair(m_text, m_position) ? end + 1 : end;
        }
        if (kind == ItemKind::Tab) {
            return end;
        }
        limit = std::min<std::size_t>(limit, currentScript().end);
        std::size_t marks = 0;
        while (end < limit && kindOf(m_text[end]) == kind && isAtLevel(end) && marks < maxMarks) {
            marks = m_text[end] >= firstMark && isMark(m_text[end]) ? marks + 1 : 0;
            ++end;
        }
        return end;
    }

    /// Whether what is at `position` stays with the item that starts here. Joiners and marks at a line's end have the
    /// paragraph's level, but they belong to the letter before them all the same.
    bool isAtLevel(std::size_t position) {
        return m_levels.empty() || m_levels[position] == m_levels[m_position] || !m_graphemes.isBoundary(position);
    }

    const ScriptRun& currentScript() {
        while (m_scripts[m_script].end <= m_position) {
            ++m_script;
        }
        return m_scripts[m_script];
    }

    TextItem& add(const RunStyle& style, CFontFace& face, float scale, ItemKind kind, std::size_t end) {
        TextItem& item = m_items.emplace_back();
        item.start = static_cast<UINT32>(m_position);
        item.length = static_cast<UINT32>(end - m_position);
        item.face = &face;
        item.emSize = style.size * scale;
        item.script = currentScript().script;
        item.bidiLevel = m_levels.empty() ? m_base : m_levels[m_position];
        item.kind = kind;
        item.locale = style.locale;
        item.isKerned = style.isKerned;
        if (kind == ItemKind::Object) {
            item.object = style.inlineObject.get();
        } else {
            item.typography = style.typography.get();
        }
        m_position = end;
        return item;
    }

    const std::u16string_view m_text;
    Graphemes m_graphemes;
    const RangeProperties& m_properties;
    const std::uint8_t m_base;
    std::vector<TextItem>& m_items;
    /// Only where the host chooses the fonts itself.
    std::optional<HostFallback> m_host;
    std::size_t m_position = 0;
    std::vector<ScriptRun> m_scripts;
    std::size_t m_script = 0;
    /// Empty if every unit is at the paragraph's level.
    std::vector<std::uint8_t> m_levels;
};

} // namespace

CFontFace* baseFace(const RunStyle& style) {
    return findBaseFont(style).face;
}

bool itemize(const TextBuffer& text, const RangeProperties& properties, const ParagraphSettings& settings,
             std::vector<TextItem>& items, std::vector<Reference<IDWriteFontFace>>& heldFaces) {
    items.clear();
    heldFaces.clear();
    if (Itemizer(text, properties, settings, items, heldFaces).run()) {
        // Half of what a long list has room for may be empty.
        if (items.size() > 100) {
            items.shrink_to_fit();
        }
        return true;
    }
    items.clear();
    return false;
}

} // namespace platform
