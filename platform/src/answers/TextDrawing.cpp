#include "answers/TextDrawing.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "answers/Decorations.h"
#include "answers/Renderer.h"
#include "answers/Snapping.h"
#include "fonts/FontFace.h"
#include "lines/LinePieces.h"

namespace platform {

namespace {

/// Cluster maps count in 16 bits; longer runs are drawn in parts.
constexpr UINT32 maxRunLength = std::numeric_limits<UINT16>::max();

/// Clusters that are drawn by one call.
struct DrawnRun {
    UINT32 clusterBegin = 0;
    UINT32 clusterEnd = 0;
    bool isShapeless = false;
    const RunStyle* style = nullptr;
    float width = 0.0F;
};

struct DrawnObject {
    IDWriteInlineObject* object = nullptr;
    IUnknown* effect = nullptr;
    bool isRightToLeft = false;
    float left = 0.0F;
    float top = 0.0F;
};

bool isDrawnAlike(const RunStyle& left, const RunStyle& right) {
    return &left == &right || (left.underline == right.underline && left.strikethrough == right.strikethrough &&
                               left.effect == right.effect);
}

class Drawer {
public:
    Drawer(const TextPipeline& pipeline, void* context, IDWriteTextRenderer& renderer, float originX, float originY,
           IUnknown* effect)
        : m_pipeline(pipeline), m_shaped(pipeline.shaped()), m_renderer(renderer, context), m_originX(originX),
          m_originY(originY), m_effect(effect) {}

    HRESULT draw() {
        HRESULT result = Snapping::ask(m_renderer.pixels(), m_renderer.context(), m_snapping);
        for (std::size_t i = 0; SUCCEEDED(result) && i < m_pipeline.lines().size(); ++i) {
            result = drawLine(i);
        }
        if (SUCCEEDED(result)) {
            result = drawObjects();
        }
        const DWRITE_FLOW_DIRECTION flow = m_pipeline.settings().flowDirection;
        for (std::size_t i = 0; SUCCEEDED(result) && i < m_underlines.size(); ++i) {
            result = drawUnderlines(m_underlines[i], flow, m_renderer);
        }
        for (std::size_t i = 0; SUCCEEDED(result) && i < m_strikethroughs.size(); ++i) {
            result = drawStrikethroughs(m_strikethroughs[i], flow, m_renderer);
        }
        return result;
    }

private:
    HRESULT drawLine(std::size_t index) {
        m_lineIndex = index;
        const Line& line = m_pipeline.lines()[index];
        m_baseline = m_snapping.snap(m_originY + m_pipeline.placement().lines[index].top + line.baseline);
        m_lineUnderlines.clear();
        m_lineStrikethroughs.clear();
        findPieces(m_pipeline, index, m_pieces);
        for (const LinePiece& piece : m_pieces) {
            if (const HRESULT result = drawPiece(piece); FAILED(result)) {
                return result;
            }
        }
        if (!m_lineUnderlines.empty()) {
            m_underlines.push_back(m_lineUnderlines);
        }
        if (!m_lineStrikethroughs.empty()) {
            m_strikethroughs.push_back(m_lineStrikethroughs);
        }
        return S_OK;
    }

    HRESULT drawPiece(const LinePiece& piece) {
        if (piece.isTrimmed) {
            addSign(piece);
            return S_OK;
        }
        const TextItem& item = m_shaped.items[piece.item];
        // The side that the piece's next run starts at.
        float x = m_originX + (piece.isRightToLeft() ? piece.left + piece.width : piece.left);
        for (UINT32 begin = piece.clusterBegin; begin < piece.clusterEnd;) {
            const DrawnRun run = nextRun(begin, piece.clusterEnd);
            const float left = piece.isRightToLeft() ? x - run.width : x;
            if (item.kind == ItemKind::Object) {
                addObject(item, piece, run, left);
            } else if (const HRESULT result = drawRun(item, piece, run, x); FAILED(result)) {
                return result;
            } else {
                addDecorations(item, piece, run, left);
            }
            x = piece.isRightToLeft() ? x - run.width : x + run.width;
            begin = run.clusterEnd;
        }
        return S_OK;
    }

    /// A cluster as a whole is drawn in the style of its first text position.
    const RunStyle& styleOf(UINT32 cluster) const {
        return m_pipeline.properties().at(m_shaped.clusters[cluster].textStart);
    }

    IUnknown* effectOf(const DrawnRun& run) const { return run.style->effect ? run.style->effect.get() : m_effect; }

    bool isShapeless(UINT32 cluster) const {
        const Line& line = m_pipeline.lines()[m_lineIndex];
        const bool isShownHyphen = line.showsHyphen && cluster + 1 == line.clusterEnd;
        return m_shaped.clusters[cluster].has(Cluster::Shapeless) && !isShownHyphen;
    }

    DrawnRun nextRun(UINT32 begin, UINT32 end) const {
        DrawnRun run;
        run.clusterBegin = begin;
        run.isShapeless = isShapeless(begin);
        DWRITE_TEXT_RANGE range{};
        run.style = &m_pipeline.properties().at(m_shaped.clusters[begin].textStart, &range);
        UINT32 cluster = begin;
        do {
            run.width += placedWidth(m_pipeline, m_lineIndex, cluster);
            ++cluster;
        } while (cluster < end && isShapeless(cluster) == run.isShapeless && fits(begin, cluster) &&
                 (m_shaped.clusters[cluster].textStart - range.startPosition < range.length ||
                  isDrawnAlike(*run.style, styleOf(cluster))));
        run.clusterEnd = cluster;
        return run;
    }

    /// Whether a run may go on through `cluster`.
    bool fits(UINT32 begin, UINT32 cluster) const {
        return m_shaped.textEnd(cluster) - m_shaped.clusters[begin].textStart <= maxRunLength &&
               m_shaped.glyphEnd(cluster) - m_shaped.clusters[begin].glyphStart <= maxRunLength;
    }

    HRESULT drawRun(const TextItem& item, const LinePiece& piece, const DrawnRun& run, float x) {
        const UINT32 firstGlyph = m_shaped.clusters[run.clusterBegin].glyphStart;
        const UINT32 textStart = m_shaped.clusters[run.clusterBegin].textStart;
        DWRITE_GLYPH_RUN glyphs{};
        glyphs.fontFace = item.face;
        glyphs.fontEmSize = item.emSize;
        glyphs.glyphCount = run.isShapeless ? 0 : m_shaped.glyphEnd(run.clusterEnd - 1) - firstGlyph;
        glyphs.bidiLevel = piece.level;
        setArrays(run, firstGlyph, glyphs);
        DWRITE_GLYPH_RUN_DESCRIPTION description{};
        description.localeName = textOf(item.locale).c_str();
        description.textPosition = textStart;
        description.string = m_pipeline.text().wide() + textStart;
        description.stringLength = m_shaped.textEnd(run.clusterEnd - 1) - textStart;
        mapClusters(run, firstGlyph, description.stringLength);
        description.clusterMap = m_clusterMap.data();
        return m_renderer.drawGlyphRun(x, m_baseline, glyphs, description, effectOf(run));
    }

    /// A renderer always gets arrays, even for runs without glyphs.
    void setArrays(const DrawnRun& run, UINT32 firstGlyph, DWRITE_GLYPH_RUN& glyphs) {
        static constexpr UINT16 noGlyph = 0;
        static constexpr FLOAT noAdvance = 0.0F;
        static constexpr DWRITE_GLYPH_OFFSET noOffset{};
        if (glyphs.glyphCount == 0) {
            glyphs.glyphIndices = &noGlyph;
            glyphs.glyphAdvances = &noAdvance;
            glyphs.glyphOffsets = &noOffset;
            return;
        }
        glyphs.glyphIndices = m_shaped.glyphs.data() + firstGlyph;
        glyphs.glyphAdvances = m_shaped.advances.data() + firstGlyph;
        glyphs.glyphOffsets = m_shaped.offsets.data() + firstGlyph;
        if (m_pipeline.placement().lines[m_lineIndex].gap != 0.0F) {
            stretch(run, firstGlyph, glyphs);
        }
    }

    /// Gives the last glyph of every stretched cluster the room that comes after it.
    void stretch(const DrawnRun& run, UINT32 firstGlyph, DWRITE_GLYPH_RUN& glyphs) {
        m_advances.assign(glyphs.glyphAdvances, glyphs.glyphAdvances + glyphs.glyphCount);
        m_offsets.assign(glyphs.glyphOffsets, glyphs.glyphOffsets + glyphs.glyphCount);
        glyphs.glyphAdvances = m_advances.data();
        glyphs.glyphOffsets = m_offsets.data();
        // Glyphs that go to the left are drawn at the far end of their advances: those with ink have to step back.
        const bool movesInk = (glyphs.bidiLevel & 1U) != 0 && !m_pipeline.placement().lines[m_lineIndex].gapsAreSpaces;
        for (UINT32 i = run.clusterBegin; i < run.clusterEnd; ++i) {
            const float added = placedWidth(m_pipeline, m_lineIndex, i) - m_shaped.clusters[i].width;
            if (added != 0.0F && m_shaped.glyphEnd(i) > m_shaped.clusters[i].glyphStart) {
                const UINT32 last = m_shaped.glyphEnd(i) - 1 - firstGlyph;
                m_advances[last] += added;
                m_offsets[last].advanceOffset -= movesInk ? added : 0.0F;
            }
        }
    }

    void mapClusters(const DrawnRun& run, UINT32 firstGlyph, UINT32 textLength) {
        m_clusterMap.resize(textLength);
        if (run.isShapeless) {
            for (UINT32 i = 0; i < textLength; ++i) {
                m_clusterMap[i] = static_cast<UINT16>(i);
            }
            return;
        }
        auto entry = m_clusterMap.begin();
        for (UINT32 i = run.clusterBegin; i < run.clusterEnd; ++i) {
            entry = std::fill_n(entry, m_shaped.textLength(i),
                                static_cast<UINT16>(m_shaped.clusters[i].glyphStart - firstGlyph));
        }
    }

    void addDecorations(const TextItem& item, const LinePiece& piece, const DrawnRun& run, float left) {
        if (run.width == 0.0F || !(run.style->underline || run.style->strikethrough)) {
            return;
        }
        const DecoratedStretch stretch{&item, effectOf(run), piece.isRightToLeft(), left, run.width, m_baseline};
        if (run.style->underline) {
            m_lineUnderlines.push_back(stretch);
        }
        if (run.style->strikethrough) {
            m_lineStrikethroughs.push_back(stretch);
        }
    }

    void addObject(const TextItem& item, const LinePiece& piece, const DrawnRun& run, float left) {
        DWRITE_INLINE_OBJECT_METRICS metrics{};
        item.object->GetMetrics(&metrics);
        m_objects.push_back({item.object, effectOf(run), piece.isRightToLeft(), left, m_baseline - metrics.baseline});
    }

    void addSign(const LinePiece& piece) {
        IDWriteInlineObject* sign = m_pipeline.settings().trimmingSign.get();
        DWRITE_INLINE_OBJECT_METRICS metrics{};
        if (sign != nullptr) {
            sign->GetMetrics(&metrics);
            m_objects.push_back(
                {sign, m_effect, piece.isRightToLeft(), m_originX + piece.left, m_baseline - metrics.baseline});
        }
    }

    HRESULT drawObjects() {
        for (const DrawnObject& object : m_objects) {
            const HRESULT result = m_renderer.drawInlineObject(object.left, object.top, object.object,
                                                               object.isRightToLeft, object.effect);
            if (FAILED(result)) {
                return result;
            }
        }
        return S_OK;
    }

    const TextPipeline& m_pipeline;
    const ShapedText& m_shaped;
    const Renderer m_renderer;
    const float m_originX;
    const float m_originY;
    IUnknown* const m_effect;
    Snapping m_snapping;
    std::vector<std::vector<DecoratedStretch>> m_underlines;
    std::vector<std::vector<DecoratedStretch>> m_strikethroughs;
    std::vector<DrawnObject> m_objects;
    // Of the line that is being drawn.
    std::size_t m_lineIndex = 0;
    float m_baseline = 0.0F;
    std::vector<DecoratedStretch> m_lineUnderlines;
    std::vector<DecoratedStretch> m_lineStrikethroughs;
    // Reused from run to run.
    std::vector<LinePiece> m_pieces;
    std::vector<UINT16> m_clusterMap;
    std::vector<FLOAT> m_advances;
    std::vector<DWRITE_GLYPH_OFFSET> m_offsets;
};

} // namespace

HRESULT drawLayout(const TextPipeline& pipeline, void* context, IDWriteTextRenderer& renderer, float originX,
                   float originY, IUnknown* effect) {
    return Drawer(pipeline, context, renderer, originX, originY, effect).draw();
}

} // namespace platform
