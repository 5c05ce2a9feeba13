#include "fallback/FallbackMapper.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <unicode/utf16.h>

#include "fallback/DrawingSymbols.h"
#include "fallback/FallbackCluster.h"
#include "fallback/NearbyLetters.h"
#include "fallback/SimpleCharacters.h"
#include "fonts/Font.h"
#include "fonts/FontCollection.h"
#include "fonts/FontFace.h"
#include "fonts/FontFamily.h"
#include "unicode/Graphemes.h"
#include "unicode/ScriptRuns.h"

namespace platform {

namespace {

/// Finds the stretch of one question. Gets the order of fallback only when the base font does not suffice.
template <typename GetOrder>
class StretchFinder {
public:
    StretchFinder(std::u16string_view text, std::size_t position, std::size_t end, CFont* base, GetOrder getOrder)
        : m_text(text), m_start(position), m_end(end), m_at(position), m_seen(position), m_base(base),
          m_getOrder(std::move(getOrder)), m_graphemes(text), m_nearby(text, base) {}

    Mapping find() {
        while (m_at < m_end) {
            takeSimple();
            if (m_at == m_end || !takeCluster()) {
                break;
            }
        }
        if (!m_decided) {
            m_font = m_base;
        }
        return {static_cast<std::uint32_t>(m_at - m_start), m_font, 1.0F};
    }

private:
    using Kind = FallbackCluster::Kind;

    const FallbackOrder& order() {
        if (!m_order) {
            m_order = m_getOrder();
        }
        return *m_order;
    }

    /// Takes characters that are clusters of their own and that the stretch's font draws.
    void takeSimple() {
        const std::size_t from = m_at;
        if (m_base != nullptr && (!m_decided || m_font == m_base)) {
            const CFontFace& base = m_base->face();
            takeWhile([&base](char16_t unit) { return base.hasCharacter(unit); });
            if (m_at > from) {
                m_decided = true;
                m_font = m_base;
            }
        } else if (m_font != nullptr) {
            const CFontFace& base = m_base->face();
            const FallbackOrder& order = this->order();
            takeWhile([&](char16_t unit) {
                return !base.hasCharacter(unit) && order.fontFor(unit) == m_font && m_nearby.isClear(unit, m_at, order);
            });
        }
    }

    template <typename Drawn>
    void takeWhile(Drawn drawn) {
        const std::size_t from = m_at;
        while (m_at < m_end && SimpleCharacters::contains(m_text[m_at]) && drawn(m_text[m_at])) {
            ++m_at;
        }
        // What stopped the run may be a mark of the last character.
        if (m_at > from && m_at < m_end && !SimpleCharacters::contains(m_text[m_at])) {
            --m_at;
        }
    }

    std::size_t clusterEnd() {
        std::size_t end = m_at;
        do {
            U16_FWD_1(m_text.data(), end, m_end);
        } while (end < m_end && !m_graphemes.isBoundary(end));
        return end;
    }

    /// Takes the next cluster into the stretch; false where the stretch ends.
    bool takeCluster() {
        const std::size_t end = clusterEnd();
        const FallbackCluster cluster = fallbackCluster(m_text, m_at, end);
        if (cluster.kind == Kind::Rider) {
            // A stretch without font is one of missing glyphs, and nothing is missing here.
            if (m_decided && m_font == nullptr) {
                return false;
            }
            m_at = end;
            return true;
        }
        if (cluster.kind != Kind::Text) {
            return takeUndrawable(cluster.kind, end);
        }
        CFont* const font = choose(cluster, end);
        if (!m_decided) {
            if (font == nullptr && m_at > m_start) {
                return false;
            }
            m_decided = true;
            m_font = font;
        } else if (font != m_font) {
            return false;
        }
        m_at = end;
        return true;
    }

    /// A selector goes along with what stands before it; alone it, like half of a pair, is a stretch of its own.
    bool takeUndrawable(Kind kind, std::size_t end) {
        if (m_at == m_start) {
            m_decided = true;
            m_at = end;
            return false;
        }
        if (kind == Kind::Selector && m_decided && m_font != nullptr) {
            m_at = end;
            return true;
        }
        return false;
    }

    CFont* choose(const FallbackCluster& cluster, std::size_t end) {
        const std::u32string_view needed = cluster.needed();
        if (cluster.wantsEmoji) {
            if (CFont* const font = order().emojiFontForAll(needed, m_base)) {
                return font;
            }
        }
        if (m_base != nullptr && (covers(*m_base, needed) || (needed.size() > 1 && coversComposed(*m_base, cluster)))) {
            return m_base;
        }
        if (std::all_of(needed.begin(), needed.end(), isCommon) && !isDrawingSymbol(needed.front())) {
            CFont* const neighbour = drawsLetters() ? m_font : fontBeside(end);
            if (neighbour != nullptr && neighbour != m_base && covers(*neighbour, needed)) {
                return neighbour;
            }
        }
        if (CFont* const font = m_nearby.fontFor(needed, m_at, order())) {
            return font;
        }
        // Nobody has all of it: whoever has the letter leaves the mark out.
        if (m_base != nullptr && m_base->face().hasCharacter(needed.front())) {
            return m_base;
        }
        return m_nearby.fontFor(needed.substr(0, 1), m_at, order());
    }

    static bool coversComposed(CFont& font, const FallbackCluster& cluster) {
        const auto characters = composed(cluster.units);
        return !characters.empty() && covers(font, {characters.data(), characters.size()});
    }

    /// Whether the stretch has a letter in the line that it has come to. What stands beside symbols only must not
    /// follow them: it would change its font with them.
    bool drawsLetters() {
        while (m_seen < m_at) {
            const char16_t unit = m_text[m_seen];
            UChar32 c = 0;
            U16_NEXT(m_text.data(), m_seen, m_at, c);
            m_drawsLetters = !isNewline(unit) && (m_drawsLetters || !isCommon(static_cast<char32_t>(c)));
        }
        return m_drawsLetters;
    }

    /// The fallback font of the letter before the cluster at hand, else of the one after it.
    CFont* fontBeside(std::size_t end) {
        CFont* const before = m_nearby.fontBefore(m_at, order());
        return before != nullptr ? before : m_nearby.fontAfter(end, order());
    }

    const std::u16string_view m_text;
    const std::size_t m_start;
    const std::size_t m_end;
    std::size_t m_at;
    // Up to where the stretch was searched for letters.
    std::size_t m_seen;
    bool m_drawsLetters = false;
    CFont* const m_base;
    GetOrder m_getOrder;
    std::shared_ptr<const FallbackOrder> m_order;
    Graphemes m_graphemes;
    NearbyLetters m_nearby;
    // Whether something other than riders was taken; then m_font draws it, or nobody does.
    bool m_decided = false;
    CFont* m_font = nullptr;
};

} // namespace

FallbackMapper& FallbackMapper::system() {
    static FallbackMapper mapper(CFontCollection::system());
    return mapper;
}

Mapping FallbackMapper::map(std::u16string_view text, std::size_t position, std::size_t length,
                            const std::wstring& locale, CFontFamily* baseFamily, DWRITE_FONT_WEIGHT weight,
                            DWRITE_FONT_STYLE style, DWRITE_FONT_STRETCH stretch) {
    if (position >= text.size() || length == 0) {
        return {};
    }
    const std::size_t end = position + std::min(length, text.size() - position);
    const auto getOrder = [&] { return m_orders.get(locale, weight, style, stretch); };
    CFont* const base =
        baseFamily != nullptr ? &baseFamily->match(weight, stretch, style).original() : getOrder()->first();
    return StretchFinder(text, position, end, base, getOrder).find();
}

} // namespace platform
