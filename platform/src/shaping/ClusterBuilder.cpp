#include "shaping/ClusterBuilder.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "fonts/FontFace.h"
#include "shaping/Spacing.h"
#include "shaping/WordShaper.h"
#include "unicode/Graphemes.h"
#include "unicode/ScriptRuns.h"

namespace platform {

namespace {

constexpr char16_t softHyphen = 0xAD;

/// Spaces that keep what stands on both sides together; they do not hang over a line's end either.
constexpr bool isNoBreakSpace(char16_t unit) noexcept {
    return unit == 0xA0 || unit == 0x2007 || unit == 0x202F;
}

std::uint16_t flagsOf(std::u16string_view cluster) {
    if (cluster.size() != 1) {
        return 0;
    }
    const char16_t unit = cluster.front();
    if (unit == u' ') {
        return Cluster::Whitespace | Cluster::Hanging;
    }
    if (unit < 0x80) {
        return 0;
    }
    if (unit == softHyphen) {
        return Cluster::SoftHyphen | Cluster::Shapeless;
    }
    const bool hangs = u_isUWhiteSpace(unit) != 0 && !isNoBreakSpace(unit);
    return hangs ? Cluster::Whitespace | Cluster::Hanging : 0;
}

hb_language_t languageOf(const Name& locale) {
    if (!locale) {
        return HB_LANGUAGE_INVALID;
    }
    const std::string ascii(locale->begin(), locale->end());
    return hb_language_from_string(ascii.data(), static_cast<int>(ascii.size()));
}

std::vector<hb_feature_t> featuresOf(IDWriteTypography* typography) {
    std::vector<hb_feature_t> features;
    const UINT32 count = typography == nullptr ? 0 : typography->GetFontFeatureCount();
    for (UINT32 i = 0; i < count; ++i) {
        DWRITE_FONT_FEATURE feature{};
        if (FAILED(typography->GetFontFeature(i, &feature))) {
            continue;
        }
        // The platform puts a tag's first letter into the lowest byte, HarfBuzz into the highest.
        const auto tag = static_cast<UINT32>(feature.nameTag);
        const hb_tag_t name = (tag << 24) | ((tag & 0xFF00) << 8) | ((tag >> 8) & 0xFF00) | (tag >> 24);
        features.push_back({name, feature.parameter, HB_FEATURE_GLOBAL_START, HB_FEATURE_GLOBAL_END});
    }
    return features;
}

/// Writes the clusters of items, one item after the other.
class ClusterBuilder {
public:
    ClusterBuilder(std::u16string_view text, ShapedText& out) : m_text(text), m_graphemes(text), m_out(out) {}

    /// [start, end) is the part of the item to shape.
    void add(const TextItem& item, UINT32 start, UINT32 end) {
        switch (item.kind) {
        case ItemKind::Text:
            m_scale = static_cast<double>(item.emSize) / std::max(1U, item.face->unitsPerEm());
            if (item.isMissing) {
                addMissing(item, start, end);
            } else {
                addShaped(item, start, end);
            }
            break;
        case ItemKind::Newline:
            for (UINT32 position = start; position < end; ++position) {
                const auto kind = startsNewlinePair(m_text, position) ? Cluster::NewlineStart : Cluster::Newline;
                addEmpty(position, kind | Cluster::Whitespace | Cluster::Hanging);
            }
            break;
        case ItemKind::Tab:
            addEmpty(start, Cluster::Tab | Cluster::Whitespace);
            break;
        case ItemKind::Control:
            for (UINT32 position = start; position < end; ++position) {
                addEmpty(position, 0);
            }
            break;
        case ItemKind::Object:
            addObject(item, start);
            break;
        }
    }

    /// Marks the end of the last cluster.
    void finish(UINT32 textEnd) {
        Cluster& end = m_out.clusters.emplace_back();
        end.textStart = textEnd;
        end.glyphStart = glyphCount();
    }

private:
    UINT32 glyphCount() const noexcept { return static_cast<UINT32>(m_out.glyphs.size()); }

    Cluster& addCluster(UINT32 start) {
        Cluster& cluster = m_out.clusters.emplace_back();
        cluster.textStart = start;
        cluster.glyphStart = glyphCount();
        return cluster;
    }

    void addEmpty(UINT32 start, unsigned flags) {
        addCluster(start).flags = static_cast<std::uint16_t>(flags | Cluster::Shapeless);
    }

    void addObject(const TextItem& item, UINT32 start) {
        Cluster& cluster = addCluster(start);
        cluster.flags = Cluster::Object;
        DWRITE_INLINE_OBJECT_METRICS metrics{};
        if (SUCCEEDED(item.object->GetMetrics(&metrics))) {
            cluster.width = metrics.width;
        }
        DWRITE_BREAK_CONDITION before = DWRITE_BREAK_CONDITION_NEUTRAL;
        DWRITE_BREAK_CONDITION after = DWRITE_BREAK_CONDITION_NEUTRAL;
        if (SUCCEEDED(item.object->GetBreakConditions(&before, &after))) {
            cluster.flags |= before == DWRITE_BREAK_CONDITION_MUST_BREAK ? Cluster::MustBreakBefore : 0;
            cluster.flags |= after == DWRITE_BREAK_CONDITION_MUST_BREAK ? Cluster::MustBreakAfter : 0;
        }
    }

    float addGlyph(std::uint16_t glyph, int advance, int advanceOffset, int ascenderOffset) {
        const auto width = static_cast<float>(advance * m_scale);
        m_out.glyphs.push_back(glyph);
        m_out.advances.push_back(width);
        m_out.offsets.push_back(
            {static_cast<float>(advanceOffset * m_scale), static_cast<float>(ascenderOffset * m_scale)});
        return width;
    }

    /// Characters that no font has: a box for each, unless they are invisible anyway.
    void addMissing(const TextItem& item, UINT32 start, UINT32 end) {
        for (UINT32 position = start; position < end;) {
            const UINT32 first = position;
            UChar32 character = 0;
            U16_NEXT(m_text.data(), position, end, character);
            const bool startsCluster = first == start || m_graphemes.isBoundary(first);
            Cluster& cluster = startsCluster ? addCluster(first) : m_out.clusters.back();
            if (startsCluster) {
                cluster.flags = Cluster::Shapeless;
            }
            if (!isIgnorable(character)) {
                cluster.flags = 0;
                cluster.width += addGlyph(0, item.face->advance(0), 0, 0);
            }
        }
    }

    void addShaped(const TextItem& item, UINT32 start, UINT32 end) {
        ShapeRequest request;
        request.text = m_text;
        request.start = start;
        request.length = end - start;
        request.face = item.face;
        request.script = item.script;
        request.language = languageOf(item.locale);
        request.isRightToLeft = item.isRightToLeft();
        request.isKerned = item.isKerned;
        const std::vector<hb_feature_t> features = featuresOf(item.typography);
        request.features = features;
        shapeByWords(request, WordStore::threads(), m_run);
        m_space = item.face->nominalGlyph(U' ');
        for (std::size_t i = 0; i < m_run.size();) {
            std::size_t next = i + 1;
            while (next < m_run.size() &&
                   (m_run[next].cluster == m_run[i].cluster || !m_graphemes.isBoundary(m_run[next].cluster))) {
                ++next;
            }
            const UINT32 clusterEnd = next < m_run.size() ? m_run[next].cluster : end;
            addShapedCluster(item, i, next, i == 0 ? start : m_run[i].cluster, clusterEnd);
            i = next;
        }
        if (m_run.empty()) {
            // The font swallowed everything.
            addEmpty(start, 0);
        }
    }

    void addShapedCluster(const TextItem& item, std::size_t first, std::size_t last, UINT32 start, UINT32 end) {
        Cluster& cluster = addCluster(start);
        cluster.flags = flagsOf(m_text.substr(start, end - start));
        if (m_run[first].isUnsafeToBreak && first != 0) {
            cluster.flags |= Cluster::UnsafeBefore;
        }
        if (cluster.has(Cluster::SoftHyphen)) {
            addHyphen(item);
            return;
        }
        for (std::size_t i = first; i < last;) {
            std::size_t next = i + 1;
            while (next < last && m_run[next].cluster == m_run[i].cluster) {
                ++next;
            }
            addGlyphs(i, next, next < last ? m_run[next].cluster : end, cluster);
            i = next;
        }
        if (cluster.glyphStart == glyphCount()) {
            cluster.flags |= Cluster::Shapeless;
        }
    }

    /// Adds the glyphs [first, last), which stand for one stretch of text up to `textEnd`. HarfBuzz leaves an empty
    /// glyph where a joiner or selector stood; here such characters have none.
    void addGlyphs(std::size_t first, std::size_t last, UINT32 textEnd, Cluster& cluster) {
        const auto isEmpty = [this](const ShapedGlyph& glyph) { return glyph.advance == 0 && glyph.glyph == m_space; };
        const auto begin = m_run.begin() + static_cast<std::ptrdiff_t>(first);
        const auto end = m_run.begin() + static_cast<std::ptrdiff_t>(last);
        const bool dropsEmpty = std::any_of(begin, end, isEmpty) && holdsIgnorable(begin->cluster, textEnd);
        for (auto glyph = begin; glyph != end; ++glyph) {
            if (!dropsEmpty || !isEmpty(*glyph)) {
                cluster.width += addGlyph(glyph->glyph, glyph->advance, glyph->advanceOffset, glyph->ascenderOffset);
            }
        }
    }

    bool holdsIgnorable(UINT32 start, UINT32 end) const {
        while (start < end) {
            UChar32 character = 0;
            U16_NEXT(m_text.data(), start, end, character);
            if (isIgnorable(character)) {
                return true;
            }
        }
        return false;
    }

    /// A soft hyphen keeps the hyphen at hand that is drawn if a line breaks after it.
    void addHyphen(const TextItem& item) {
        for (const char32_t character : {U'\u2010', U'-'}) {
            if (const std::uint16_t glyph = item.face->nominalGlyph(character); glyph != 0) {
                addGlyph(glyph, item.face->advance(glyph), 0, 0);
                return;
            }
        }
    }

    std::u16string_view m_text;
    Graphemes m_graphemes;
    ShapedText& m_out;
    ShapedRun m_run;
    double m_scale = 0.0;
    std::uint16_t m_space = 0;
};

} // namespace

void buildClusters(std::u16string_view text, const RangeProperties& styles, ShapedText& shaped) {
    shaped.clusters.clear();
    shaped.glyphs.clear();
    shaped.advances.clear();
    shaped.offsets.clear();
    shaped.clusters.reserve(text.size() + 1);
    shaped.glyphs.reserve(text.size());
    shaped.advances.reserve(text.size());
    shaped.offsets.reserve(text.size());
    ClusterBuilder builder(text, shaped);
    for (TextItem& item : shaped.items) {
        item.clusterBegin = static_cast<UINT32>(shaped.clusters.size());
        builder.add(item, item.start, item.start + item.length);
        item.clusterEnd = static_cast<UINT32>(shaped.clusters.size());
    }
    builder.finish(static_cast<UINT32>(text.size()));
    addSpacing(styles, 0, shaped);
}

void appendPart(std::u16string_view text, const RangeProperties& styles, const TextItem& item, UINT32 start, UINT32 end,
                ShapedText& shaped) {
    if (!shaped.clusters.empty()) {
        shaped.clusters.pop_back();
    }
    TextItem part = item;
    part.start = start;
    part.length = end - start;
    part.clusterBegin = static_cast<UINT32>(shaped.clusters.size());
    ClusterBuilder builder(text, shaped);
    builder.add(part, start, end);
    part.clusterEnd = static_cast<UINT32>(shaped.clusters.size());
    shaped.items.push_back(part);
    builder.finish(end);
    addSpacing(styles, shaped.items.size() - 1, shaped);
}

} // namespace platform
